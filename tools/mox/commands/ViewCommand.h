#ifndef MOX_COMMANDS_VIEWCOMMAND_H
#define MOX_COMMANDS_VIEWCOMMAND_H

#include "export/View.h"

#include <ostream>
#include <string>

class CommandLine;

/// Adds the command `view`.
void addViewCommand(CommandLine& commandLine);

/// Draws a model into a PNG file and says on `out` what the picture shows, as JSON if wanted. A
/// failure gets one line on `err`, which names the file that is wrong, and leaves nothing behind.
/// Returns the exit status.
int viewFile(std::string const& input, std::string const& output,
             Export::ViewOptions const& options, bool asJson, std::ostream& out, std::ostream& err);

#endif
