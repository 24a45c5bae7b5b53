// The linker sends what the program asks of files by name or descriptor here.

#include "fault/Faults.h"

#include <cerrno>
#include <cstddef>

#include <sys/types.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
int __real_rename(char const* from, char const* to);
int __real_ftruncate(int file, off_t size);
ssize_t __real_pread(int file, void* bytes, std::size_t count, off_t offset);
ssize_t __real_pwrite(int file, void const* bytes, std::size_t count, off_t offset);
int __real_fsync(int file);
int __real_fdatasync(int file);
int __wrap_rename(char const* from, char const* to);
int __wrap_ftruncate(int file, off_t size);
ssize_t __wrap_pread(int file, void* bytes, std::size_t count, off_t offset);
ssize_t __wrap_pwrite(int file, void const* bytes, std::size_t count, off_t offset);
int __wrap_fsync(int file);
int __wrap_fdatasync(int file);
}

namespace {

bool fileCallFails()
{
    bool const fails = Fault::strikes(Fault::Place::File);
    if (fails)
        errno = EIO;
    return fails;
}

} // namespace

extern "C" {
int __wrap_rename(char const* from, char const* to)
{
    return fileCallFails() ? -1 : __real_rename(from, to);
}

int __wrap_ftruncate(int file, off_t size)
{
    return fileCallFails() ? -1 : __real_ftruncate(file, size);
}

ssize_t __wrap_pread(int file, void* bytes, std::size_t count, off_t offset)
{
    return fileCallFails() ? -1 : __real_pread(file, bytes, count, offset);
}

ssize_t __wrap_pwrite(int file, void const* bytes, std::size_t count, off_t offset)
{
    return fileCallFails() ? -1 : __real_pwrite(file, bytes, count, offset);
}

int __wrap_fsync(int file)
{
    return fileCallFails() ? -1 : __real_fsync(file);
}

int __wrap_fdatasync(int file)
{
    return fileCallFails() ? -1 : __real_fdatasync(file);
}
}
// NOLINTEND(bugprone-reserved-identifier)
