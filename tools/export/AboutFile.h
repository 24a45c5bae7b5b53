#ifndef EXPORT_ABOUTFILE_H
#define EXPORT_ABOUTFILE_H

#include "Error.h"

#include <exception>
#include <new>
#include <string>

namespace Export {

/// An error that begins with the name of the file that it is about.
class FileError : public Error
{
public:
    using Error::Error;
};

/// Runs an action on a file: what it raises is about that file, unless it is known to be about
/// another.
template <typename Action>
auto aboutFile(std::string const& path, Action const& action)
{
    try {
        return action();
    } catch (FileError const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw FileError(path + ": There is not enough memory.");
    } catch (std::exception const& error) {
        throw FileError(path + ": " + error.what());
    }
}

} // namespace Export

#endif
