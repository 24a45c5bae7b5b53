#include "PartialFile.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace Common {

namespace {

[[noreturn]] void failWith(int error)
{
    if (error == EEXIST)
        throw std::runtime_error("File exists.");
    throw std::runtime_error("The file cannot be written: " + std::string(std::strerror(error)) +
                             ".");
}

std::filesystem::path const& checkTarget(std::filesystem::path const& target, bool overwrite)
{
    std::error_code ignored;
    auto const status = std::filesystem::status(target, ignored);
    if (!std::filesystem::exists(status))
        return target;
    if (!overwrite)
        failWith(EEXIST);
    if (!std::filesystem::is_regular_file(status))
        throw std::runtime_error("This is not a regular file and is not overwritten.");
    return target;
}

bool createNew(std::filesystem::path const& path)
{
    int const file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno != EEXIST)
        failWith(errno);
    if (file >= 0)
        ::close(file);
    return file >= 0;
}

} // namespace

PartialFile::PartialFile(std::filesystem::path const& target, bool overwrite)
    : target_(checkTarget(target, overwrite)), overwrite_(overwrite), temporary_(target, createNew)
{}

void PartialFile::publish()
{
    if (!overwrite_)
        publishWithoutOverwriting();
    else if (::rename(path().c_str(), target_.c_str()) != 0)
        failWith(errno);
}

void PartialFile::publishWithoutOverwriting()
{
    // rename would replace a file that somebody else made meanwhile; link does not.
    if (::link(path().c_str(), target_.c_str()) == 0) {
        ::unlink(path().c_str());
        return;
    }
    int const error = errno;
    bool const hasNoLinks = error == EPERM || error == EOPNOTSUPP || error == ENOSYS;
    if (!hasNoLinks)
        failWith(error);
    checkTarget(target_, false);
    if (::rename(path().c_str(), target_.c_str()) != 0)
        failWith(errno);
}

} // namespace Common
