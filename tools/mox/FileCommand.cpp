#include "FileCommand.h"

#include <exception>
#include <new>

int runOnFile(std::string const& path, std::ostream& err, std::function<void()> const& action)
{
    try {
        action();
        return 0;
    } catch (std::bad_alloc const&) {
        err << path << ": there is not enough memory\n";
    } catch (std::exception const& error) {
        err << path << ": " << error.what() << '\n';
    }
    return 1;
}
