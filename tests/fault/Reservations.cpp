// The linker sends the program's own requests for room and for new files here.

#include "fault/Faults.h"

#include <cerrno>
#include <cstdarg>

#include <fcntl.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
int __real_posix_fallocate(int file, off_t offset, off_t size);
int __real_openat(int folder, char const* name, int flags, ...);
int __wrap_posix_fallocate(int file, off_t offset, off_t size);
int __wrap_openat(int folder, char const* name, int flags, ...);

int __wrap_posix_fallocate(int file, off_t offset, off_t size)
{
    if (Fault::strikes(Fault::Place::Reservation))
        return ENOSPC;
    if (Fault::takeRoom(static_cast<std::size_t>(size)) < static_cast<std::size_t>(size))
        return ENOSPC;
    return __real_posix_fallocate(file, offset, size);
}

int __wrap_openat(int folder, char const* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (Fault::strikes(Fault::Place::Reservation)) {
        errno = EMFILE;
        return -1;
    }
    return __real_openat(folder, name, flags, mode);
}
}
// NOLINTEND(bugprone-reserved-identifier)
