#include "mox/compare/Tolerance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Mox::Tolerance;

TEST(Tolerance, WithoutBoundsOnlyEqualNumbersAreAccepted)
{
    Tolerance const none;
    EXPECT_TRUE(none.accepts(1.5, 1.5));
    EXPECT_TRUE(none.accepts(0., -0.));
    EXPECT_FALSE(none.accepts(1., std::nextafter(1., 2.)));
}

TEST(Tolerance, EitherBoundIsEnough)
{
    Tolerance const both{0.5, 0.01};
    EXPECT_TRUE(both.accepts(1, 1.5));
    EXPECT_FALSE(both.accepts(1, 1.75));
    EXPECT_TRUE(both.accepts(100, 99));
    EXPECT_TRUE(both.accepts(-1000, -1010));
    EXPECT_FALSE(both.accepts(1000, 1011));
}

TEST(Tolerance, NaNIsEqualToNaNOnly)
{
    Tolerance const wide{1e300, 1};
    EXPECT_TRUE(wide.accepts(NAN, NAN));
    EXPECT_FALSE(wide.accepts(NAN, 0));
    EXPECT_FALSE(wide.accepts(0, NAN));
}

TEST(Tolerance, InfiniteNumbersAreEqualToThemselvesOnly)
{
    Tolerance const wide{1e300, 1};
    EXPECT_TRUE(wide.accepts(INFINITY, INFINITY));
    EXPECT_FALSE(wide.accepts(INFINITY, -INFINITY));
    EXPECT_FALSE(wide.accepts(INFINITY, 1));
    EXPECT_FALSE(wide.accepts(1, -INFINITY));
}

} // namespace
