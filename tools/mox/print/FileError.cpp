#include "FileError.h"

#include <exception>
#include <new>

namespace Mox {

void inFile(std::string const& path, std::function<void()> const& action)
{
    try {
        action();
    } catch (FileError const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw FileError(path + ": there is not enough memory");
    } catch (std::exception const& error) {
        throw FileError(path + ": " + error.what());
    }
}

int runOnFile(std::string const& path, std::ostream& err, std::function<void()> const& action)
{
    try {
        inFile(path, action);
        return 0;
    } catch (FileError const& error) {
        err << error.what() << '\n';
        return 1;
    }
}

} // namespace Mox
