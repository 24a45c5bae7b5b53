#ifndef MOX_COMMANDS_VIEWCOMMAND_H
#define MOX_COMMANDS_VIEWCOMMAND_H

#include "export/View.h"

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct ViewArguments
{
    std::string input;
    std::string output;
    std::string size;
    std::string camera;
    Export::ViewOptions options;
    /// Whether each file of an index gets an output of its own.
    bool parts = false;
    bool json = false;
};

/// Adds the command `view`.
void addViewCommand(CommandLine& commandLine);

/// Draws a model into a PNG file and says on `out` what the picture shows, as JSON if wanted. A
/// failure gets one line on `err`, which names the file that is wrong, and leaves nothing behind.
/// Returns the exit status.
int viewFile(ViewArguments const& arguments, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
