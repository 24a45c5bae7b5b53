#ifndef MOX_COMMANDS_RECOVERCOMMAND_H
#define MOX_COMMANDS_RECOVERCOMMAND_H

#include <Zyl2/Mox2/InterruptedRun.h>

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct RecoverArguments
{
    std::string file;
    /// Where the recovered model is written; empty to put it in the place of `file`.
    std::string output;
    /// Whether an existing output is replaced.
    bool overwrite = false;
};

/// Adds the command `recover`.
void addRecoverCommand(CommandLine& commandLine);

/// Makes a whole file of what a run has left that did not come to its end. What was saved, or why
/// nothing could be, gets one line. Returns the exit status.
int recoverFile(RecoverArguments const& arguments, std::ostream& out, std::ostream& err);

/// How far a run has come, and what can be done of it, in words that follow on what is wrong with
/// its file.
std::string stateOfRun(Zyl2::Mox2::RunProgress const& progress, std::string const& file);

/// How far the run of an incomplete file had come, or has, and that it can be recovered; empty
/// where it left nothing to recover from. Disturbs no run.
std::string adviceOnRun(std::string const& file);

} // namespace Mox

#endif
