#include "MemoryFile.h"

#include <cerrno>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace Fuzz {

namespace {

[[noreturn]] void fail(char const* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

void writeAll(int descriptor, std::uint8_t const* bytes, std::size_t size)
{
    for (std::size_t done = 0; done < size;) {
        ssize_t const count = ::write(descriptor, bytes + done, size - done);
        if (count < 0)
            fail("write");
        done += static_cast<std::size_t>(count);
    }
}

} // namespace

MemoryFile::MemoryFile(std::uint8_t const* bytes, std::size_t size)
    : descriptor_(::memfd_create("input", MFD_CLOEXEC))
{
    if (descriptor_ < 0)
        fail("memfd_create");
    writeAll(descriptor_, bytes, size);
    path_ = "/proc/self/fd/" + std::to_string(descriptor_);
}

MemoryFile::~MemoryFile()
{
    ::close(descriptor_);
}

} // namespace Fuzz
