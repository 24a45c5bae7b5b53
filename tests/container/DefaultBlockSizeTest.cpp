#include "Zyl2/Wvf/DefaultBlockSize.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace {

using Support::DefaultBlockSizeSetting;
using Zyl2Wvf::DefaultBlockSizeFromEnvironment;

std::optional<unsigned long> SizeFor(char const* text)
{
    DefaultBlockSizeSetting const setting(text);
    return DefaultBlockSizeFromEnvironment();
}

TEST(DefaultBlockSize, IsTheDecimalNumberThatTheVariableBeginsWith)
{
    unsigned long const largest = std::numeric_limits<unsigned long>::max();
    std::vector<std::pair<char const*, std::optional<unsigned long>>> const cases{
        {nullptr, std::nullopt},
        {"4096", 4096},
        {" 7 bytes", 7},
        {"0x10", 0},
        {"010", 10},
        {"", 0},
        {"many", 0},
        {"-1", largest},
        {"99999999999999999999999", largest}};
    for (auto const& [text, size] : cases)
        EXPECT_EQ(SizeFor(text), size) << (text == nullptr ? "not set" : text);
}

} // namespace
