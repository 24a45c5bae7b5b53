#ifndef MOX_COMMANDS_JOINCOMMAND_H
#define MOX_COMMANDS_JOINCOMMAND_H

#include <optional>
#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct JoinArguments
{
    std::string index;
    std::string output;
    std::optional<double> tolerance;
    bool overwrite = false;
    bool json = false;
};

/// Adds the command `join`.
void addJoinCommand(CommandLine& commandLine);

/// Writes one model of the files of an index. What is lost or differs is told on `err`. Returns the
/// exit status.
int joinFiles(JoinArguments const& options, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
