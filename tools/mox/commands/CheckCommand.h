#ifndef MOX_COMMANDS_CHECKCOMMAND_H
#define MOX_COMMANDS_CHECKCOMMAND_H

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct CheckArguments
{
    std::string file;
    /// Whether the files of an index are checked one by one.
    bool parts = false;
    bool json = false;
};

/// Adds the command `check`.
void addCheckCommand(CommandLine& commandLine);

/// Prints on `out` what a model says and cannot mean. Returns the exit status: 0 also when there
/// are warnings, 1 when there are errors. A file whose layout is bad gets one line on `err` and 1.
int checkFile(CheckArguments const& options, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
