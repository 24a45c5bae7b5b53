#include "FileCommand.h"

#include <exception>
#include <new>

int runOnFile(const std::string& path, std::ostream& err, const std::function<void()>& action)
{
    try {
        action();
        return 0;
    } catch (const std::bad_alloc&) {
        err << path << ": there is not enough memory\n";
    } catch (const std::exception& error) {
        err << path << ": " << error.what() << '\n';
    }
    return 1;
}
