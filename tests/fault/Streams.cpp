// The linker sends the program's own stream calls here instead of to the C library. The streams are
// real ones on a device that can be made to fail, so that a write that fails sets the stream's
// error flag, is short, or shows only when the buffer is flushed, just as with a real disk.

#include "fault/Faults.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
std::FILE* __real_fopen(char const* path, char const* mode);
std::size_t __real_fwrite(void const* from, std::size_t size, std::size_t count, std::FILE* stream);
int __real_fseeko(std::FILE* stream, off_t offset, int whence);
int __real_fflush(std::FILE* stream);
int __real_fclose(std::FILE* stream);
std::FILE* __wrap_fopen(char const* path, char const* mode);
std::size_t __wrap_fwrite(void const* from, std::size_t size, std::size_t count, std::FILE* stream);
int __wrap_fseeko(std::FILE* stream, off_t offset, int whence);
int __wrap_fflush(std::FILE* stream);
int __wrap_fclose(std::FILE* stream);
}

namespace {

/// Makes the device fail for the time of one call of a stream.
bool deviceIsFull = false;
bool closeFails = false;

int descriptorOf(void* device)
{
    return static_cast<int>(reinterpret_cast<std::intptr_t>(device));
}

[[noreturn]] void endProcess()
{
    ::raise(SIGKILL);
    ::_exit(1);
}

ssize_t writeToDevice(void* device, char const* bytes, std::size_t count)
{
    bool const isKilled = Fault::kills();
    bool const fails = deviceIsFull || Fault::strikes(Fault::Place::Device);
    std::size_t const room = Fault::takeRoom(count);
    bool const isFull = room < count;
    ssize_t const written = ::write(descriptorOf(device), bytes,
                                    isFull              ? room
                                    : isKilled || fails ? count / 2
                                                        : count);
    if (isKilled)
        endProcess();
    if (fails || isFull)
        errno = ENOSPC;
    return written < 0 ? 0 : written;
}

int seekOnDevice(void* device, off64_t* offset, int whence)
{
    if (Fault::kills())
        endProcess();
    if (Fault::strikes(Fault::Place::Device)) {
        errno = EIO;
        return -1;
    }
    off_t const position = ::lseek(descriptorOf(device), *offset, whence);
    *offset = position;
    return position < 0 ? -1 : 0;
}

/// As on a network file system that finds its disk full only when the file is closed.
void loseBytes(int descriptor)
{
    off_t const size = ::lseek(descriptor, 0, SEEK_END);
    static_cast<void>(::ftruncate(descriptor, size / 2) == 0);
}

int closeDevice(void* device)
{
    if (Fault::kills())
        endProcess();
    bool const fails = closeFails || Fault::strikes(Fault::Place::Device);
    if (fails)
        loseBytes(descriptorOf(device));
    int const result = ::close(descriptorOf(device));
    if (fails)
        errno = EIO;
    return fails ? -1 : result;
}

std::FILE* streamOn(int descriptor)
{
    cookie_io_functions_t const device{nullptr, writeToDevice, seekOnDevice, closeDevice};
    auto* const cookie = reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor));
    std::FILE* const stream = ::fopencookie(cookie, "w", device);
    // For calls that take the descriptor of a stream; the C library gives such a stream none.
    if (stream != nullptr)
        stream->_fileno = descriptor;
    return stream;
}

bool callFails()
{
    return Fault::strikes(Fault::Place::StreamCall);
}

/// Flushes to a device that is full, after which the stream's error flag is set.
void failToFlush(std::FILE* stream)
{
    deviceIsFull = true;
    static_cast<void>(__real_fflush(stream));
    deviceIsFull = false;
    errno = ENOSPC;
}

} // namespace

extern "C" {
std::FILE* __wrap_fopen(char const* path, char const* mode)
{
    if (callFails()) {
        errno = EMFILE;
        return nullptr;
    }
    if (!Fault::isPlanned() || std::strcmp(mode, "wb") != 0)
        return __real_fopen(path, mode);
    int const descriptor = ::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    return descriptor < 0 ? nullptr : streamOn(descriptor);
}

std::size_t __wrap_fwrite(void const* from, std::size_t size, std::size_t count, std::FILE* stream)
{
    if (!callFails())
        return __real_fwrite(from, size, count, stream);
    deviceIsFull = true;
    static_cast<void>(__real_fwrite(from, size, count, stream));
    failToFlush(stream);
    return 0;
}

int __wrap_fseeko(std::FILE* stream, off_t offset, int whence)
{
    if (!callFails())
        return __real_fseeko(stream, offset, whence);
    errno = EIO;
    return -1;
}

int __wrap_fflush(std::FILE* stream)
{
    if (!callFails())
        return __real_fflush(stream);
    failToFlush(stream);
    return EOF;
}

int __wrap_fclose(std::FILE* stream)
{
    closeFails = callFails();
    int const result = __real_fclose(stream);
    closeFails = false;
    return result;
}
}
// NOLINTEND(bugprone-reserved-identifier)
