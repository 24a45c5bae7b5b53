#ifndef MOX_LSCOMMAND_H
#define MOX_LSCOMMAND_H

#include <ostream>
#include <string>

namespace CLI {
class App;
}

/// Adds the command `ls` and stores its exit status when it runs.
void addLsCommand(CLI::App& app, int& exitStatus);

/// Prints on `out` what is in a file. A bad file gets one line on `err` and nothing on `out`: no
/// part of it is shown as if it were the whole. Returns the exit status.
int listFile(std::string const& path, std::ostream& out, std::ostream& err);

#endif
