#ifndef MOX_VERIFYCOMMAND_H
#define MOX_VERIFYCOMMAND_H

#include <ostream>
#include <string>

namespace CLI {
class App;
}

/// Adds the command `verify` and stores its exit status when it runs.
void addVerifyCommand(CLI::App& app, int& exitStatus);

/// Says on `out` that a file is sound, or on `err` what is wrong with it. Returns the exit status.
int verifyFile(std::string const& path, std::ostream& out, std::ostream& err);

#endif
