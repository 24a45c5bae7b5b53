#include <read/frd/Number.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Frd::parseInteger;
using Frd::parseReal;

TEST(Number, IntegersStandBetweenBlanks)
{
    EXPECT_EQ(parseInteger("   12  "), 12);
    EXPECT_EQ(parseInteger("  -3"), -3);
    EXPECT_EQ(parseInteger("+7"), 7);
    EXPECT_EQ(parseInteger("9999999999"), 9999999999);
}

TEST(Number, WhatIsNoIntegerIsRefused)
{
    for (char const* text : {"", "   ", "1.0", "1 2", "x", "12x", "+-1", "99999999999999999999"})
        EXPECT_FALSE(parseInteger(text)) << text;
}

TEST(Number, RealsMayHaveAnyExponentThatFortranWrites)
{
    EXPECT_EQ(parseReal(" 1.50000E+00"), 1.5);
    EXPECT_EQ(parseReal("-2.5E-3"), -0.0025);
    EXPECT_EQ(parseReal("1.0D+02"), 100.0);
    EXPECT_EQ(parseReal("1.0d2"), 100.0);
    EXPECT_EQ(parseReal("1.0-100"), 1e-100);
    EXPECT_EQ(parseReal("-1.25+100"), -1.25e100);
    EXPECT_EQ(parseReal("1.0E-100"), 1e-100);
    EXPECT_EQ(parseReal("1300.398827"), 1300.398827);
    EXPECT_EQ(parseReal("+7"), 7.0);
}

TEST(Number, NotANumberAndInfinityAreNumbers)
{
    for (char const* text : {"NaN", "NAN", "nan", "-NAN"})
        EXPECT_TRUE(std::isnan(parseReal(text).value_or(0))) << text;
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(parseReal("Infinity"), infinity);
    EXPECT_EQ(parseReal("-INF"), -infinity);
    EXPECT_EQ(parseReal("+Infinity"), infinity);
}

TEST(Number, TooSmallIsZeroAndTooLargeIsInfinite)
{
    EXPECT_EQ(parseReal("1.0E-400"), 0.0);
    EXPECT_TRUE(std::signbit(parseReal("-1.0-400").value_or(1)));
    EXPECT_EQ(parseReal("1.0E+400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(parseReal("-1.0+400"), -std::numeric_limits<double>::infinity());
}

TEST(Number, WhatIsNoNumberIsRefused)
{
    for (char const* text : {"", "  ", "********", "1.0E", "1.0E+", "1.0-", "E5", "1..0", "1.0 2.0",
                             "0x1p3", "+-1", "nan(1)", "1.0E5.0", "--1"})
        EXPECT_FALSE(parseReal(text)) << text;
}

} // namespace
