#include "Zyl2/Wvf/LogLock.h"

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

namespace Zyl2Wvf {

namespace {

// A lock of the process ends when the process closes any descriptor of the file, which may be the
// host's own business. One of the open file does not; but it tells nobody who has it.
#ifdef F_OFD_SETLK
constexpr int SetLock = F_OFD_SETLK;
constexpr int GetLock = F_OFD_GETLK;
#else
constexpr int SetLock = F_SETLK;
constexpr int GetLock = F_GETLK;
#endif

/// The byte whose lock counts, and the one whose lock tells which process has that.
constexpr off_t LockByte = 0;
constexpr off_t NameByte = 1;

struct flock LockOf(off_t byte)
{
    struct flock lock
    {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

LogHolder Named(int log)
{
    struct flock lock = LockOf(NameByte);
    bool const isKnown =
        ::fcntl(log, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0;
    return {isKnown ? lock.l_pid : 0};
}

std::mutex locksOfProcess;
LogLock* firstLock = nullptr;

} // namespace

std::string LogHolder::GetText() const
{
    if (process == 0)
        return {};
    return " by process " + std::to_string(process);
}

LogLock::LogLock(int log) : descriptor_(log)
{
    RegisterForks();
    std::lock_guard<std::mutex> const guard(locksOfProcess);
    next_ = firstLock;
    firstLock = this;
}

LogLock::~LogLock()
{
    std::lock_guard<std::mutex> const guard(locksOfProcess);
    LogLock** place = &firstLock;
    while (*place != this)
        place = &(*place)->next_;
    *place = next_;
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::optional<LogHolder> LogLock::Take(int log) noexcept
{
    struct flock lock = LockOf(LockByte);
    if (::fcntl(log, SetLock, &lock) != 0 && (errno == EACCES || errno == EAGAIN))
        return Named(log);
    struct flock name = LockOf(NameByte);
    static_cast<void>(::fcntl(log, F_SETLK, &name));
    return std::nullopt;
}

std::optional<LogHolder> LogLock::HolderOf(int log) noexcept
{
    struct flock lock = LockOf(LockByte);
    if (::fcntl(log, GetLock, &lock) != 0 || lock.l_type == F_UNLCK)
        return std::nullopt;
    return Named(log);
}

/// Where the system has no memory for it, a forked process keeps the lock until it ends.
void LogLock::RegisterForks()
{
    static int const registered = ::pthread_atfork(BeforeFork, AfterFork, AfterForkInChild);
    static_cast<void>(registered);
}

void LogLock::BeforeFork() noexcept
{
    locksOfProcess.lock();
}

void LogLock::AfterFork() noexcept
{
    locksOfProcess.unlock();
}

void LogLock::AfterForkInChild() noexcept
{
    for (LogLock* lock = firstLock; lock != nullptr; lock = lock->next_) {
        ::close(lock->descriptor_);
        lock->descriptor_ = -1;
    }
    locksOfProcess.unlock();
}

} // namespace Zyl2Wvf
