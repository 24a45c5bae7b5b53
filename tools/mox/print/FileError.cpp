#include "FileError.h"

#include "moxread/FormatError.h"

#include <exception>
#include <new>
#include <utility>

namespace Mox {

namespace {

Advice& advice()
{
    static Advice installed;
    return installed;
}

std::string adviceOn(std::string const& path, MoxRead::FormatError const& error)
{
    std::string const words = error.isIncomplete() && advice() ? advice()(path) : "";
    return words.empty() ? words : "; " + words;
}

} // namespace

void adviseOnIncompleteFiles(Advice newAdvice)
{
    advice() = std::move(newAdvice);
}

void inFile(std::string const& path, std::function<void()> const& action)
{
    try {
        action();
    } catch (FileError const&) {
        throw;
    } catch (MoxRead::FormatError const& error) {
        throw FileError(path + ": " + error.what() + adviceOn(path, error));
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
