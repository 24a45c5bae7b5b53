// Hands out the file's bytes as they are:
//
//   offset 0 ........ offset ........ offset + count ........ size
//                     [ bytes read ]

#include "moxread/InputFile.h"

#include "moxread/FormatError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace MoxRead {

namespace {

FormatError systemError(std::string const& what)
{
    return FormatError(what + ": " + std::generic_category().message(errno));
}

} // namespace

// A named pipe without a writer would block an ordinary open for ever.
InputFile::InputFile(std::string const& path)
    : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    if (descriptor_ < 0)
        throw systemError("cannot be opened");
    try {
        requireRegular();
    } catch (FormatError const&) {
        ::close(descriptor_);
        throw;
    }
}

InputFile::~InputFile()
{
    ::close(descriptor_);
}

void InputFile::requireRegular()
{
    struct stat status = {};
    if (::fstat(descriptor_, &status) != 0)
        throw systemError("cannot be examined");
    if (!S_ISREG(status.st_mode))
        throw FormatError("not a regular file");
    size_ = static_cast<std::uint64_t>(status.st_size);
}

std::uint64_t InputFile::size() const noexcept
{
    return size_;
}

void InputFile::read(std::uint64_t offset, std::uint8_t* to, std::size_t count) const
{
    std::size_t done = 0;
    while (done < count) {
        ssize_t const got =
            ::pread(descriptor_, to + done, count - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw systemError("cannot be read at byte " + std::to_string(offset + done));
        if (got == 0)
            throw FormatError::incomplete("the file ends at byte " + std::to_string(offset + done));
        done += static_cast<std::size_t>(got);
    }
}

} // namespace MoxRead
