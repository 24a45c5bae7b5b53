#include "mox/compare/NameMatching.h"

#include <gtest/gtest.h>

namespace {

using Mox::NameMatching;

using Names = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;
using Places = std::vector<std::size_t>;

TEST(NameMatching, EqualNamesBelongTogether)
{
    NameMatching const matching(Names{"a", "b", "c"}, Names{"b", "d", "a"});
    EXPECT_EQ(matching.pairs, (Pairs{{0, 2}, {1, 0}}));
    EXPECT_EQ(matching.onlyLeft, Places{2});
    EXPECT_EQ(matching.onlyRight, Places{1});
    EXPECT_FALSE(matching.isInOrder());
}

TEST(NameMatching, TwinsBelongTogetherByTheirOrder)
{
    NameMatching const matching(Names{"a", "a", "b", "a"}, Names{"b", "a", "a"});
    EXPECT_EQ(matching.pairs, (Pairs{{0, 1}, {1, 2}, {2, 0}}));
    EXPECT_EQ(matching.onlyLeft, Places{3});
    EXPECT_EQ(matching.onlyRight, Places{});
}

TEST(NameMatching, WhatIsMissingDoesNotChangeTheOrder)
{
    EXPECT_TRUE(NameMatching(Names{"a", "x", "b"}, Names{"a", "b", "y"}).isInOrder());
    EXPECT_TRUE(NameMatching(Names{}, Names{}).isInOrder());
}

} // namespace
