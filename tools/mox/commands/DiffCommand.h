#ifndef MOX_COMMANDS_DIFFCOMMAND_H
#define MOX_COMMANDS_DIFFCOMMAND_H

#include "mox/compare/Tolerance.h"
#include "moxread/ReadOptions.h"

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct DiffArguments
{
    std::string left;
    std::string right;
    Tolerance tolerance;
    /// Whether the files of two indices are compared one by one.
    bool parts = false;
    bool json = false;
    /// How both files are read; its threads are shared out among the two.
    MoxRead::ReadOptions reading;
};

/// Adds the command `diff`.
void addDiffCommand(CommandLine& commandLine);

/// Prints on `out` in what two models differ, a line for each difference. A bad file gets one line
/// on `err` and nothing on `out`. Returns the exit status: 0 when they are equal, else 1.
int diffFiles(DiffArguments const& options, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
