#include "Zyl2/Util/Buffer.h"
#include "FailingAllocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace {

using Zyl2Util::Buffer;

/// Marks that tell a place from its neighbours. They repeat themselves after no multiple of a page.
std::vector<unsigned char> const& Marks()
{
    static std::vector<unsigned char> const marks = [] {
        std::vector<unsigned char> result(65521);
        for (std::size_t place = 0; place < result.size(); ++place)
            result[place] = static_cast<unsigned char>(place * 2654435761U >> 13U);
        return result;
    }();
    return marks;
}

/// Calls use(place, marks, number of bytes) for all places up to the end.
template <typename Use>
void ForMarks(std::size_t first, std::size_t end, Use use)
{
    std::vector<unsigned char> const& marks = Marks();
    while (first < end) {
        std::size_t const from = first % marks.size();
        std::size_t const size = std::min(end - first, marks.size() - from);
        use(first, marks.data() + from, size);
        first += size;
    }
}

void FillFrom(Buffer& buffer, std::size_t first)
{
    ForMarks(first, buffer.GetSize(),
             [&](std::size_t place, unsigned char const* marks, std::size_t size) {
                 std::memcpy(buffer.GetData() + place, marks, size);
             });
}

bool HasMarks(Buffer const& buffer, std::size_t size)
{
    bool same = true;
    ForMarks(0, size, [&](std::size_t place, unsigned char const* marks, std::size_t count) {
        same = same && std::memcmp(buffer.GetData() + place, marks, count) == 0;
    });
    return same;
}

TEST(Buffer, KeepsItsContentWhileItGrowsFromSmallToLarge)
{
    Buffer buffer;
    std::size_t filled = 0;
    for (std::size_t const size : {std::size_t(1), std::size_t(100), std::size_t(5000),
                                   Buffer::LargeSize - 1, Buffer::LargeSize, Buffer::LargeSize + 1,
                                   3 * Buffer::LargeSize + 4097, 20 * Buffer::LargeSize}) {
        ASSERT_TRUE(buffer.Grow(size));
        ASSERT_EQ(buffer.GetSize(), size);
        EXPECT_TRUE(HasMarks(buffer, filled)) << size;
        buffer.PreferHugePages();
        FillFrom(buffer, filled);
        filled = size;
    }
    EXPECT_TRUE(HasMarks(buffer, filled));
}

TEST(Buffer, DoesNotGrowToLessThanItHas)
{
    Buffer buffer;
    ASSERT_TRUE(buffer.Grow(10));
    FillFrom(buffer, 0);
    EXPECT_TRUE(buffer.Grow(0));
    EXPECT_TRUE(buffer.Grow(9));
    EXPECT_EQ(buffer.GetSize(), 10U);
    EXPECT_TRUE(HasMarks(buffer, 10));
}

TEST(Buffer, GivesBackPagesThatAreNotUsedAndGrowsAgain)
{
    constexpr std::size_t used = Buffer::LargeSize + 5;
    Buffer buffer;
    ASSERT_TRUE(buffer.Grow(6 * Buffer::LargeSize));
    buffer.PreferHugePages();
    FillFrom(buffer, 0);
    unsigned char const* const data = buffer.GetData();
    buffer.Shrink(used);
    EXPECT_EQ(buffer.GetSize(), used);
    EXPECT_EQ(buffer.GetData(), data);
    EXPECT_TRUE(HasMarks(buffer, used));
    ASSERT_TRUE(buffer.Grow(9 * Buffer::LargeSize));
    EXPECT_TRUE(HasMarks(buffer, used));
    FillFrom(buffer, used);
    EXPECT_TRUE(HasMarks(buffer, 9 * Buffer::LargeSize));
}

TEST(Buffer, StaysMappedWhenLittleOfItIsUsed)
{
    Buffer buffer;
    ASSERT_TRUE(buffer.Grow(3 * Buffer::LargeSize));
    FillFrom(buffer, 0);
    buffer.Shrink(10);
    EXPECT_EQ(buffer.GetSize(), Buffer::LargeSize);
    EXPECT_TRUE(HasMarks(buffer, Buffer::LargeSize));
}

TEST(Buffer, WhatIsSmallOrUsedDoesNotShrink)
{
    Buffer small;
    ASSERT_TRUE(small.Grow(1000));
    small.Shrink(10);
    EXPECT_EQ(small.GetSize(), 1000U);
    Buffer large;
    ASSERT_TRUE(large.Grow(Buffer::LargeSize + 10));
    large.Shrink(2 * Buffer::LargeSize);
    EXPECT_EQ(large.GetSize(), Buffer::LargeSize + 10);
    Buffer none;
    none.Shrink(0);
    EXPECT_EQ(none.GetSize(), 0U);
}

TEST(Buffer, AskedForNothingItStaysWithoutData)
{
    Buffer buffer;
    EXPECT_TRUE(buffer.Grow(0));
    EXPECT_EQ(buffer.GetData(), nullptr);
}

TEST(Buffer, WithoutMemoryNothingChanges)
{
    for (std::size_t const size :
         {std::size_t(10), Buffer::LargeSize - 1, Buffer::LargeSize, 2 * Buffer::LargeSize}) {
        Buffer buffer;
        ASSERT_TRUE(buffer.Grow(size));
        FillFrom(buffer, 0);
        unsigned char const* const data = buffer.GetData();
        {
            Support::FailingAllocation const failing(0);
            EXPECT_FALSE(buffer.Grow(size + 1));
            EXPECT_TRUE(failing.HasFailed());
        }
        EXPECT_EQ(buffer.GetData(), data);
        EXPECT_EQ(buffer.GetSize(), size);
        EXPECT_TRUE(HasMarks(buffer, size));
    }
}

TEST(Buffer, HugePagesGrowWithoutBeingCopied)
{
    Buffer buffer;
    ASSERT_TRUE(buffer.Grow(4 * Buffer::LargeSize));
    buffer.PreferHugePages();
    FillFrom(buffer, 0);
    // A copy would need a second mapping.
    Support::FailingAllocation const failing(1);
    ASSERT_TRUE(buffer.Grow(40 * Buffer::LargeSize));
    EXPECT_FALSE(failing.HasFailed());
    EXPECT_TRUE(HasMarks(buffer, 4 * Buffer::LargeSize));
}

TEST(Buffer, MoreThanTheAddressSpaceIsRefused)
{
    Buffer buffer;
    EXPECT_FALSE(buffer.Grow(SIZE_MAX));
    ASSERT_TRUE(buffer.Grow(Buffer::LargeSize));
    EXPECT_FALSE(buffer.Grow(SIZE_MAX));
    EXPECT_EQ(buffer.GetSize(), Buffer::LargeSize);
}

TEST(Buffer, MovesLeaveNothingBehind)
{
    for (std::size_t const size : {std::size_t(10), Buffer::LargeSize}) {
        Buffer first;
        ASSERT_TRUE(first.Grow(size));
        FillFrom(first, 0);
        unsigned char const* const data = first.GetData();
        Buffer second(std::move(first));
        EXPECT_EQ(second.GetData(), data);
        EXPECT_EQ(first.GetSize(), 0U); // NOLINT: what a move leaves is the question
        Buffer third;
        ASSERT_TRUE(third.Grow(20));
        third = std::move(second);
        EXPECT_EQ(third.GetData(), data);
        EXPECT_TRUE(HasMarks(third, size));
        EXPECT_EQ(second.GetData(), nullptr); // NOLINT: the same
    }
}

TEST(Buffer, WhatIsBorrowedNeitherGrowsNorShrinksNorIsGivenBack)
{
    for (std::size_t const size : {std::size_t(10), 2 * Buffer::LargeSize}) {
        std::vector<unsigned char> owner(size);
        Buffer borrowed = Buffer::Borrow(owner.data(), size);
        FillFrom(borrowed, 0);
        EXPECT_TRUE(borrowed.Grow(size));
        EXPECT_FALSE(borrowed.Grow(size + 1));
        borrowed.Shrink(1);
        borrowed.PreferHugePages();
        EXPECT_EQ(borrowed.GetData(), owner.data());
        EXPECT_EQ(borrowed.GetSize(), size);
        EXPECT_TRUE(HasMarks(borrowed, size));
    }
}

} // namespace
