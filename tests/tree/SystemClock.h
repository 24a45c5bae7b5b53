#ifndef TESTS_TREE_SYSTEMCLOCK_H
#define TESTS_TREE_SYSTEMCLOCK_H

#include <ctime>

namespace Support {

/// While one lives, it is always the same time for the system.
class SystemClock
{
public:
    explicit SystemClock(std::time_t time);
    SystemClock(SystemClock const&) = delete;
    SystemClock& operator=(SystemClock const&) = delete;
    ~SystemClock();

    std::time_t const now;
};

} // namespace Support

#endif
