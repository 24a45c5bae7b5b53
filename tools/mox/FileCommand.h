#ifndef MOX_FILECOMMAND_H
#define MOX_FILECOMMAND_H

#include <functional>
#include <ostream>
#include <string>

/// Runs an action on a file and returns the exit status: 0, or 1 after one line on `err`, which
/// names the file and says what is wrong with it.
int runOnFile(std::string const& path, std::ostream& err, std::function<void()> const& action);

#endif
