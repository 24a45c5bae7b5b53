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

void checkTarget(std::filesystem::path const& target, bool overwrite)
{
    std::error_code ignored;
    auto const status = std::filesystem::status(target, ignored);
    if (!std::filesystem::exists(status))
        return;
    if (!overwrite)
        failWith(EEXIST);
    if (!std::filesystem::is_regular_file(status))
        throw std::runtime_error("This is not a regular file and is not overwritten.");
}

std::string stemOf(std::filesystem::path const& target, int process)
{
    return target.string() + ".partial-" + std::to_string(process) + "-";
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
    : target_(target), overwrite_(overwrite)
{
    checkTarget(target, overwrite);
    create();
}

PartialFile::~PartialFile()
{
    std::error_code ignored;
    if (!isPublished_)
        std::filesystem::remove(path_, ignored);
}

void PartialFile::removeLeftBy(int process, std::filesystem::path const& target)
{
    std::error_code ignored;
    std::string const stem = stemOf(target, process);
    for (int attempt = 0; std::filesystem::remove(stem + std::to_string(attempt), ignored);)
        ++attempt;
}

void PartialFile::create()
{
    std::string const stem = stemOf(target_, ::getpid());
    int attempt = 0;
    do {
        path_ = stem + std::to_string(attempt++);
    } while (!createNew(path_));
}

void PartialFile::publish()
{
    if (!overwrite_)
        publishWithoutOverwriting();
    else if (::rename(path_.c_str(), target_.c_str()) != 0)
        failWith(errno);
    isPublished_ = true;
}

void PartialFile::publishWithoutOverwriting()
{
    // rename would replace a file that somebody else made meanwhile; link does not.
    if (::link(path_.c_str(), target_.c_str()) == 0) {
        ::unlink(path_.c_str());
        return;
    }
    int const error = errno;
    bool const hasNoLinks = error == EPERM || error == EOPNOTSUPP || error == ENOSYS;
    if (!hasNoLinks)
        failWith(error);
    checkTarget(target_, false);
    if (::rename(path_.c_str(), target_.c_str()) != 0)
        failWith(errno);
}

} // namespace Common
