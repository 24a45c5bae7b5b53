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

TEST(BlockSizeLimiter, TheLimitIsTheNumberInTheVariableOr200Mebibytes)
{
    EXPECT_EQ(LimitFor("10"), 10U);
    EXPECT_EQ(LimitFor("4294967294"), 4294967294U);
    for (char const* const text : {"0", "", "many"})
        EXPECT_EQ(LimitFor(text), 0U) << text;
    for (char const* const text : {"4294967295", "4294967296", "-1"})
        EXPECT_EQ(LimitFor(text), 209715200U) << text;
    EXPECT_EQ(LimitFor(nullptr), 209715200U);
}

TEST(BlockSizeLimiter, ALimitThatIsGivenIsTakenWhateverTheVariableSays)
{
    Support::DefaultBlockSizeSetting const setting("10");
    EXPECT_EQ(BlockSizeLimiter(27804).limit, 27804U);
    EXPECT_TRUE(BlockSizeLimiter(27804).blocks.empty());
}

} // namespace
