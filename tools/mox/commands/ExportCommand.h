#ifndef MOX_COMMANDS_EXPORTCOMMAND_H
#define MOX_COMMANDS_EXPORTCOMMAND_H

#include "export/Export.h"

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct ExportArguments
{
    std::string input;
    std::string output;
    Export::ExportOptions options;
    /// Whether each file of an index gets an output of its own.
    bool parts = false;
    bool json = false;
};

/// Adds the command `export`.
void addExportCommand(CommandLine& commandLine);

/// Writes a model as VTK's XML files and says on `out` what was written, as JSON if wanted. A
/// failure gets one line on `err`, which names the file that is wrong, and leaves nothing behind.
/// Returns the exit status.
int exportFile(ExportArguments const& arguments, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
