#ifndef MOX_COMMANDS_INFOCOMMAND_H
#define MOX_COMMANDS_INFOCOMMAND_H

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct InfoArguments
{
    std::string file;
    /// Whether the files of an index are told apart.
    bool parts = false;
    bool json = false;
};

/// Adds the command `info`.
void addInfoCommand(CommandLine& commandLine);

/// Prints on `out` of which blocks a file is made, and who wrote it. Needs a sound container, but
/// looks into no values. A bad file gets one line on `err`. Returns the exit status.
int showInfo(InfoArguments const& options, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
