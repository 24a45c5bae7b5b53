#ifndef MOX_PRINT_FILEERROR_H
#define MOX_PRINT_FILEERROR_H

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>

namespace Mox {

/// What is wrong with which file, in one line that begins with the file's name.
class FileError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What can be done about a model file that is incomplete, in words that follow on what is wrong
/// with it; empty for nothing.
using Advice = std::function<std::string(std::string const& path)>;

/// Sets what is asked for advice from here on. Reading knows nothing of writing: it has none.
void adviseOnIncompleteFiles(Advice advice);

/// Runs an action on a file; what it raises becomes a FileError that names the file.
void inFile(std::string const& path, std::function<void()> const& action);

/// Runs an action on a file and returns the exit status: 0, or 1 after one line on `err`, which
/// names the file and says what is wrong with it.
int runOnFile(std::string const& path, std::ostream& err, std::function<void()> const& action);

} // namespace Mox

#endif
