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

TEST(PathSplitter, CutsAPathIntoItsNames)
{
    EXPECT_EQ(split("/car/body/door", "/"), (Names{"car", "body", "door"}));
}

TEST(PathSplitter, YieldsNoEmptyNames)
{
    EXPECT_EQ(split("//car///body//", "/"), (Names{"car", "body"}));
}

TEST(PathSplitter, FindsNoNamesInAPathOfSeparators)
{
    EXPECT_EQ(split("///", "/"), Names());
    EXPECT_EQ(split("", "/"), Names());
}

TEST(PathSplitter, TakesEveryCharacterOfTheSeparatorForOne)
{
    EXPECT_EQ(split("/a.b/.c", "/."), (Names{"a", "b", "c"}));
}

TEST(PathSplitter, TakesNeitherBlanksNorPunctuationForSeparators)
{
    EXPECT_EQ(split("/left door/a.b,c;d\te", "/"), (Names{"left door", "a.b,c;d\te"}));
}

TEST(PathSplitter, TakesThePathForOneNameWithoutASeparator)
{
    EXPECT_EQ(split("/a b", ""), Names{"/a b"});
}

TEST(PathSplitter, OutlivesThePathItWasMadeFrom)
{
    auto path = std::make_unique<std::string>("/a name that is too long to be held in place/b");
    PathSplitter const names(*path, "/");
    path.reset();
    EXPECT_EQ(Names(names.begin(), names.end()),
              (Names{"a name that is too long to be held in place", "b"}));
}

TEST(PathSplitter, CanBeDestroyedThroughABase)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<PathSplitter>);
}

} // namespace
