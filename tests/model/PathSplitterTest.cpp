#include "Zyl2/Mox2/Component/PathSplitter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Zyl2::Mox2::Component::PathSplitter;
using Names = std::vector<std::string>;

Names split(std::string const& path, char const* separator)
{
    PathSplitter const names(path, separator);
    return {names.begin(), names.end()};
}

TEST(PathSplitter, TakesNeitherBlanksNorPunctuationForSeparators)
{
    EXPECT_EQ(split("/left door/a.b,c;d\te", "/"), (Names{"left door", "a.b,c;d\te"}));
}

TEST(PathSplitter, CanBeWalkedAgainFromEachOfItsNames)
{
    std::string const path = "/a name that is too long to be held in place/b/c";
    PathSplitter const names(path, "/");
    auto const second = std::next(names.begin());
    EXPECT_EQ(*second, "b");
    EXPECT_EQ(second->size(), 1U);
    auto walking = second;
    EXPECT_EQ(*walking++, "b");
    EXPECT_EQ(*walking, "c");
    EXPECT_EQ(Names(second, names.end()), (Names{"b", "c"}));
    EXPECT_EQ(Names(names.begin(), names.end()).size(), 3U);
}

TEST(PathSplitter, TakesAZeroByteForPartOfAName)
{
    EXPECT_EQ(split(std::string("/a\0b/c", 6), "/"), (Names{std::string("a\0b", 3), "c"}));
}

} // namespace
