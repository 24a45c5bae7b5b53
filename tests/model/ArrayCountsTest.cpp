#include "Zyl2/Mox2/Adder/ArrayCounts.h"

#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using namespace Zyl2::Exception;
using Zyl2::Mox2::Adder::checkArrayCounts;

constexpr std::int64_t LargestCount = 2147483647;

Support::Thrown underflow()
{
    return {13, "Underflow error", "checkArrayCounts", "Zyl2/Mox2/Adder/ArrayProperty", 68};
}

/// \param line 0 for any
Support::Thrown overflow(int line)
{
    return {12, "Overflow error", "checkArrayCounts", "Zyl2/Mox2/Adder/ArrayProperty", line};
}

void expectOverflow(std::int64_t rows, std::int64_t cols, std::int64_t components, int line)
{
    Support::expectThrown<OverflowError>([&] { checkArrayCounts(rows, cols, components); },
                                         overflow(line));
}

void expectUnderflow(std::int64_t rows, std::int64_t components)
{
    Support::expectThrown<UnderflowError>([&] { checkArrayCounts(rows, 1, components); },
                                          underflow());
}

TEST(ArrayCounts, OfAnOrdinaryArrayPass)
{
    EXPECT_NO_THROW(checkArrayCounts(1, 1, 1));
    EXPECT_NO_THROW(checkArrayCounts(1000000, 6, 1000));
    EXPECT_NO_THROW(checkArrayCounts(0, 3, 0));
}

TEST(ArrayCounts, BelowZeroAreAnUnderflow)
{
    expectUnderflow(-1, 1);
    expectUnderflow(1, -1);
    expectUnderflow(-1, -1);
}

TEST(ArrayCounts, BelowZeroAreFoundBeforeWhatIsTooLarge)
{
    expectUnderflow(LargestCount + 1, -1);
    expectUnderflow(-1, LargestCount + 1);
}

TEST(ArrayCounts, MayBeAsLargeAs2147483647Components)
{
    EXPECT_NO_THROW(checkArrayCounts(1, 1, LargestCount));
    expectOverflow(1, 1, LargestCount + 1, 70);
}

TEST(ArrayCounts, OfMoreThan2147483647RowsAreAnOverflow)
{
    expectOverflow(LargestCount + 1, 1, 1, 72);
}

TEST(ArrayCounts, OfComponentsAreLookedAtBeforeRows)
{
    expectOverflow(LargestCount + 1, 1, LargestCount + 1, 70);
}

TEST(ArrayCounts, MayComeTo4294967292Bytes)
{
    EXPECT_NO_THROW(checkArrayCounts(1073741823, 1, 1));
    EXPECT_NO_THROW(checkArrayCounts(357913941, 3, 1));
    EXPECT_NO_THROW(checkArrayCounts(1, 1073741823, 1));
}

TEST(ArrayCounts, OfMoreThan4294967295BytesAreAnOverflow)
{
    expectOverflow(1073741824, 1, 1, 0);
    expectOverflow(357913942, 3, 1, 0);
    expectOverflow(178956971, 6, 1, 0);
    expectOverflow(LargestCount, 1, 1, 0);
    expectOverflow(LargestCount, LargestCount, 1, 0);
    expectOverflow(1, INT64_MAX, 1, 0);
}

} // namespace
