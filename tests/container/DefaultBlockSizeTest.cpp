#include "Zyl2/Wvf/DefaultBlockSize.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace {

using Support::DefaultBlockSizeSetting;
using Zyl2Wvf::DefaultBlockSizeFromEnvironment;

std::optional<unsigned long> SizeFor(char const* text)
{
    DefaultBlockSizeSetting const setting(text);
    return DefaultBlockSizeFromEnvironment();
}

TEST(DefaultBlockSize, IsUnknownWhenTheVariableIsNotSet)
{
    EXPECT_EQ(SizeFor(nullptr), std::nullopt);
}

TEST(DefaultBlockSize, IsTheDecimalNumberInTheVariable)
{
    EXPECT_EQ(SizeFor("4096"), 4096UL);
    EXPECT_EQ(SizeFor(" 7 bytes"), 7UL);
    EXPECT_EQ(SizeFor("0x10"), 0UL);
    EXPECT_EQ(SizeFor("010"), 10UL);
}

TEST(DefaultBlockSize, IsZeroForATextThatIsNoNumber)
{
    EXPECT_EQ(SizeFor(""), 0UL);
    EXPECT_EQ(SizeFor("many"), 0UL);
}

TEST(DefaultBlockSize, IsTheLargestNumberForOnesThatCannotBeHeld)
{
    EXPECT_EQ(SizeFor("-1"), std::numeric_limits<unsigned long>::max());
    EXPECT_EQ(SizeFor("99999999999999999999999"), std::numeric_limits<unsigned long>::max());
}

} // namespace
