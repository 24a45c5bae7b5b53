#ifndef MOX_COMMANDS_LSCOMMAND_H
#define MOX_COMMANDS_LSCOMMAND_H

#include <optional>
#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct LsArguments
{
    std::string file;
    /// Path of the node to begin with, the root unless given.
    std::optional<std::string> node;
    /// Whether the files of an index are listed instead of what is in them.
    bool parts = false;
    bool json = false;
};

/// Adds the command `ls`.
void addLsCommand(CommandLine& commandLine);

/// Prints on `out` what is in a file. A bad file gets one line on `err` and nothing on `out`: no
/// part of it is shown as if it were the whole. Returns the exit status.
int listFile(LsArguments const& options, std::ostream& out, std::ostream& err);

/// Lists all of a file as text.
int listFile(std::string const& path, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
