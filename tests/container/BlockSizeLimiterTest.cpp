#include "Zyl2/Wvf/BlockSizeLimiter.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using Zyl2Wvf::BlockSizeLimiter;

std::uint32_t LimitFor(char const* text)
{
    Support::DefaultBlockSizeSetting const setting(text);
    return BlockSizeLimiter().limit;
}

TEST(BlockSizeLimiter, TheLimitIs200MebibytesWithoutTheVariable)
{
    EXPECT_EQ(LimitFor(nullptr), 209715200U);
}

TEST(BlockSizeLimiter, TheLimitIsTheNumberInTheVariable)
{
    EXPECT_EQ(LimitFor("10"), 10U);
    EXPECT_EQ(LimitFor("4294967294"), 4294967294U);
}

TEST(BlockSizeLimiter, ZeroAndTextsThatAreNoNumbersAreALimitOfZero)
{
    EXPECT_EQ(LimitFor("0"), 0U);
    EXPECT_EQ(LimitFor(""), 0U);
    EXPECT_EQ(LimitFor("many"), 0U);
}

TEST(BlockSizeLimiter, NumbersAbove4294967294GiveTheDefault)
{
    EXPECT_EQ(LimitFor("4294967295"), 209715200U);
    EXPECT_EQ(LimitFor("4294967296"), 209715200U);
    EXPECT_EQ(LimitFor("-1"), 209715200U);
}

TEST(BlockSizeLimiter, ALimitThatIsGivenIsTakenWhateverTheVariableSays)
{
    Support::DefaultBlockSizeSetting const setting("10");
    EXPECT_EQ(BlockSizeLimiter(27804).limit, 27804U);
    EXPECT_TRUE(BlockSizeLimiter(27804).blocks.empty());
}

} // namespace
