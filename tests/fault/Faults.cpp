#include "fault/Faults.h"

#include <atomic>
#include <mutex>

namespace Fault {

namespace {

struct Plan
{
    Place place = Place::None;
    std::size_t left = 0;
    Repeat repeat = Repeat::Once;
    bool hasStruck = false;
};

/// Guards the plan: the library's threads look at it, too.
std::mutex mutex;
Plan plan;
std::atomic<int> workers{0};
bool isKilling = false;
std::size_t leftUntilKilled = 0;
std::atomic<long> live{0};

} // namespace

AtWork::AtWork()
{
    ++workers;
}

AtWork::~AtWork()
{
    --workers;
}

Injection::Injection(Place place, std::size_t ordinal, Repeat repeat)
{
    std::lock_guard<std::mutex> const lock(mutex);
    plan = Plan{place, ordinal, repeat, false};
}

Injection::~Injection()
{
    std::lock_guard<std::mutex> const lock(mutex);
    plan = Plan();
}

bool Injection::hasStruck() const // NOLINT: asks about the one that lives
{
    std::lock_guard<std::mutex> const lock(mutex);
    return plan.hasStruck;
}

Killing::Killing(std::size_t ordinal)
{
    isKilling = true;
    leftUntilKilled = ordinal;
}

Killing::~Killing()
{
    isKilling = false;
}

long liveAllocations()
{
    return live;
}

bool strikes(Place place)
{
    if (workers == 0)
        return false;
    std::lock_guard<std::mutex> const lock(mutex);
    if (place != plan.place)
        return false;
    if (plan.hasStruck)
        return plan.repeat == Repeat::FromThenOn;
    if (plan.left-- > 0)
        return false;
    plan.hasStruck = true;
    return true;
}

bool isPlanned()
{
    std::lock_guard<std::mutex> const lock(mutex);
    return isKilling || plan.place != Place::None;
}

bool kills()
{
    return isKilling && leftUntilKilled-- == 0;
}

void countAllocation(long change)
{
    live += change;
}

} // namespace Fault
