#include "fault/Faults.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>

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
/// Bytes that the disk takes yet, unless it is endless.
std::optional<std::size_t> roomLeft;
bool hasRunOut = false;
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

FullDisk::FullDisk(std::size_t bytes)
{
    std::lock_guard<std::mutex> const lock(mutex);
    roomLeft = bytes;
    hasRunOut = false;
}

FullDisk::~FullDisk()
{
    std::lock_guard<std::mutex> const lock(mutex);
    roomLeft.reset();
}

bool FullDisk::wasFull() const // NOLINT: asks about the one that lives
{
    std::lock_guard<std::mutex> const lock(mutex);
    return hasRunOut;
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

std::size_t takeRoom(std::size_t bytes)
{
    std::lock_guard<std::mutex> const lock(mutex);
    if (!roomLeft)
        return bytes;
    hasRunOut = hasRunOut || bytes > *roomLeft;
    std::size_t const taken = std::min(bytes, *roomLeft);
    *roomLeft -= taken;
    return taken;
}

bool isPlanned()
{
    std::lock_guard<std::mutex> const lock(mutex);
    return isKilling || roomLeft || plan.place != Place::None;
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
