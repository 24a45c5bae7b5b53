#include "SystemClock.h"

namespace {

Support::SystemClock const* active = nullptr;

} // namespace

// The linker sends the program's own calls here instead of to the C library.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
std::time_t __real_time(std::time_t* result);
std::time_t __wrap_time(std::time_t* result);

std::time_t __wrap_time(std::time_t* result)
{
    if (active == nullptr)
        return __real_time(result);
    if (result != nullptr)
        *result = active->now;
    return active->now;
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace Support {

SystemClock::SystemClock(std::time_t time) : now(time)
{
    active = this;
}

SystemClock::~SystemClock()
{
    active = nullptr;
}

} // namespace Support
