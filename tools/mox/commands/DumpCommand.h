#ifndef MOX_COMMANDS_DUMPCOMMAND_H
#define MOX_COMMANDS_DUMPCOMMAND_H

#include "moxread/ReadOptions.h"

#include <optional>
#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct DumpArguments
{
    std::string file;
    std::string node;
    std::string dataset;
    std::optional<std::string> step;
    /// "text", "csv" or "npy"; empty for the one that the output's name tells, else text.
    std::string format;
    /// Path to write to; empty for the standard output.
    std::string output;
    bool overwrite = false;
    /// Whether the dataset of each file of an index is written apart.
    bool parts = false;
    bool json = false;
    MoxRead::ReadOptions reading;
};

/// Adds the command `dump`.
void addDumpCommand(CommandLine& commandLine);

/// Writes the values of one dataset to `out`, or to the file that the options name. A bad file, or
/// a dataset that is not there, gets one line on `err`. Returns the exit status.
int dumpDataset(DumpArguments const& options, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
