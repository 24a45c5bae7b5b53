#include <export/NumberFormat.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace {

using namespace Export;

std::string shown(double least, double greatest, double value)
{
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), numberFormat(least, greatest).c_str(), value);
    return text.data();
}

TEST(NumberFormat, HasAsManyDecimalsAsTellTheNumbersApart)
{
    EXPECT_EQ(shown(0, 1.5, 0.25), "0.25");
    EXPECT_EQ(shown(0, 231.4, 115.66), "116");
    EXPECT_EQ(shown(-12, 12, -3.98), "-4.0");
    EXPECT_EQ(shown(0, 0.0417, 0.0123), "0.0123");
    EXPECT_EQ(shown(20, 20.5, 20.25), "20.250");
}

TEST(NumberFormat, IsExponentialForVeryLargeAndSmallNumbers)
{
    EXPECT_EQ(shown(0, 2.5e8, 1.25e8), "1.25e+08");
    EXPECT_EQ(shown(0, 3e-5, 1.5e-5), "1.50e-05");
}

TEST(NumberFormat, OfOneValueOnly)
{
    EXPECT_EQ(shown(0, 0, 0), "0.00");
    EXPECT_EQ(shown(7, 7, 7), "7.00");
}

TEST(NumberFormat, ShortNumbersHaveThreeDigits)
{
    EXPECT_EQ(shortNumber(10.53), "10.5");
    EXPECT_EQ(shortNumber(0.026412), "0.0264");
    EXPECT_EQ(shortNumber(2), "2");
}

} // namespace
