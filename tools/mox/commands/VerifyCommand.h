#ifndef MOX_COMMANDS_VERIFYCOMMAND_H
#define MOX_COMMANDS_VERIFYCOMMAND_H

#include "moxread/ReadOptions.h"

#include <ostream>
#include <string>
#include <vector>

namespace Mox {

class CommandLine;

struct VerifyArguments
{
    std::vector<std::string> files;
    /// Whether the files of an index are told apart.
    bool parts = false;
    bool json = false;
    MoxRead::ReadOptions reading;
};

/// Adds the command `verify`.
void addVerifyCommand(CommandLine& commandLine);

/// Says on `out` that files are sound, or on `err` what is wrong with them: a line for each, and
/// for several one more that counts them. Returns the exit status.
int verifyFiles(VerifyArguments const& options, std::ostream& out, std::ostream& err);

/// Verifies one file and tells of it as text.
int verifyFile(std::string const& path, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
