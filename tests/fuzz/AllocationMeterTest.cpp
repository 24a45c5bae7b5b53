#include "AllocationMeter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace {

using Fuzz::AllocationMeter;

constexpr std::size_t size = 1000000;

TEST(AllocationMeter, CountsWhatIsHeldAtOnce)
{
    AllocationMeter const meter;
    std::vector<char> const first(size);
    std::vector<char> const second(size);
    EXPECT_GE(meter.peak(), 2 * size);
    EXPECT_LT(meter.peak(), 2 * size + 100000);
}

TEST(AllocationMeter, RemembersTheMostThoughItIsFreedAgain)
{
    AllocationMeter const meter;
    for (int i = 0; i < 5; ++i)
        std::vector<char> const passing(size);
    EXPECT_GE(meter.peak(), size);
    EXPECT_LT(meter.peak(), 2 * size);
}

TEST(AllocationMeter, LetsNewFailBeyondItsLimit)
{
    AllocationMeter const meter(2 * size);
    std::vector<char> const first(size);
    EXPECT_THROW(std::vector<char>(size + 1), std::bad_alloc);
    EXPECT_LT(meter.peak(), 2 * size);
}

TEST(AllocationMeter, TakesNothingOverFromTheMeterBefore)
{
    {
        AllocationMeter const meter;
        std::vector<char> const passing(size);
        EXPECT_GE(meter.peak(), size);
    }
    AllocationMeter const meter;
    EXPECT_EQ(meter.peak(), 0U);
}

} // namespace
