// To be loaded before a command: its clock moves on by a second whenever somebody looks at it, so
// that whatever the command does takes longer than people wait without a sign.

#include <atomic>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    static std::atomic<long> looks{0};
    long const status = ::syscall(SYS_clock_gettime, clock, time);
    if (status == 0 && clock == CLOCK_MONOTONIC)
        time->tv_sec += ++looks;
    return static_cast<int>(status);
}
