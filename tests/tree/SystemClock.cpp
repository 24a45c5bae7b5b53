#include "SystemClock.h"

namespace {

Support::SystemClock const* activeClock = nullptr;

} // namespace

// The linker sends the program's own calls here instead of to the C library.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
std::time_t __real_time(std::time_t* result);
std::time_t __wrap_time(std::time_t* result);

std::time_t __wrap_time(std::time_t* result)
{
    if (activeClock == nullptr)
        return __real_time(result);
    if (result != nullptr)
        *result = activeClock->now;
    return activeClock->now;
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace Support {

SystemClock::SystemClock(std::time_t time) : now(time)
{
    activeClock = this;
}

SystemClock::~SystemClock()
{
    activeClock = nullptr;
}

} // namespace Support
