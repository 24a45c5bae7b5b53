#ifndef MOX_TRANSLATECOMMAND_H
#define MOX_TRANSLATECOMMAND_H

#include <ostream>
#include <string>

namespace CLI {
class App;
}

/// Adds the command `translate` and stores its exit status when it runs.
void addTranslateCommand(CLI::App& app, int& exitStatus);

/// Translates a solver's result file into a model. A failure gets one line on `err`, which names
/// the file that is wrong, and leaves no output file behind. Returns the exit status.
int translateFile(std::string const& input, std::string const& output, bool overwrite,
                  std::ostream& err);

#endif
