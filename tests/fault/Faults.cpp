#include "fault/Faults.h"

namespace Fault {

namespace {

struct Plan
{
    Place place = Place::None;
    std::size_t left = 0;
    Repeat repeat = Repeat::Once;
    bool hasStruck = false;
};

Plan plan;
int workers = 0;
bool isKilling = false;
std::size_t leftUntilKilled = 0;
long live = 0;

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
    plan = Plan{place, ordinal, repeat, false};
}

Injection::~Injection()
{
    plan = Plan();
}

bool Injection::hasStruck() const // NOLINT: asks about the one that lives
{
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
    if (workers == 0 || place != plan.place)
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
