#include "Zyl2/Adt/ChildIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Zyl2Adt::ChildIndex;

std::vector<ChildIndex::IdType> Chain(ChildIndex const& index, ChildIndex::IdType parent,
                                      std::string_view key)
{
    std::vector<ChildIndex::IdType> ids;
    for (ChildIndex::IdType id = index.GetFirst(parent, key); id != 0; id = index.GetNext(id))
        ids.push_back(id);
    return ids;
}

using Ids = std::vector<ChildIndex::IdType>;

TEST(ChildIndex, AnUnknownKeyHasNoChildren)
{
    ChildIndex index;
    EXPECT_EQ(index.GetFirst(1, "a"), 0U);
    index.Insert(1, "a", 2);
    EXPECT_EQ(index.GetFirst(1, "b"), 0U);
    EXPECT_EQ(index.GetFirst(2, "a"), 0U);
}

TEST(ChildIndex, TheChainIsInIdOrderWhateverTheOrderOfInsertion)
{
    ChildIndex index;
    for (ChildIndex::IdType const child : {5U, 9U, 2U, 7U, 6U, 3U, 20U, 8U})
        index.Insert(1, "a", child);
    EXPECT_EQ(Chain(index, 1, "a"), (Ids{2, 3, 5, 6, 7, 8, 9, 20}));
}

TEST(ChildIndex, ParentsAndKeysAreKeptApart)
{
    ChildIndex index;
    index.Insert(1, "a", 2);
    index.Insert(1, "b", 3);
    index.Insert(2, "a", 4);
    index.Insert(1, "a", 5);
    EXPECT_EQ(Chain(index, 1, "a"), (Ids{2, 5}));
    EXPECT_EQ(Chain(index, 1, "b"), (Ids{3}));
    EXPECT_EQ(Chain(index, 2, "a"), (Ids{4}));
}

TEST(ChildIndex, KeysWithZeroBytesAreKeptApart)
{
    ChildIndex index;
    index.Insert(1, std::string_view("a\0b", 3), 2);
    index.Insert(1, std::string_view("a\0c", 3), 3);
    index.Insert(1, "a", 4);
    EXPECT_EQ(Chain(index, 1, std::string_view("a\0b", 3)), (Ids{2}));
    EXPECT_EQ(Chain(index, 1, std::string_view("a\0c", 3)), (Ids{3}));
    EXPECT_EQ(Chain(index, 1, "a"), (Ids{4}));
}

TEST(ChildIndex, EveryChildOfManyParentsIsFoundAmongFew)
{
    ChildIndex index;
    ChildIndex::IdType child = 2;
    constexpr ChildIndex::IdType parents = 300;
    constexpr ChildIndex::IdType childrenEach = 30;
    for (ChildIndex::IdType parent = 1; parent <= parents; ++parent)
        for (ChildIndex::IdType number = 0; number < childrenEach; ++number)
            index.Insert(parent, std::to_string(number), child++);
    std::size_t longest = 0;
    child = 2;
    for (ChildIndex::IdType parent = 1; parent <= parents; ++parent)
        for (ChildIndex::IdType number = 0; number < childrenEach; ++number, ++child) {
            Ids const chain = Chain(index, parent, std::to_string(number));
            EXPECT_NE(std::count(chain.begin(), chain.end(), child), 0);
            longest = std::max(longest, chain.size());
        }
    EXPECT_LE(longest, 2U);
}

TEST(ChildIndex, TwinsKeepTheirChainWhileTheIndexGrows)
{
    ChildIndex index;
    constexpr ChildIndex::IdType count = 1000;
    Ids twins;
    for (ChildIndex::IdType child = 2; child < 2 + 2 * count; child += 2) {
        index.Insert(1, "twin", child);
        index.Insert(1, std::to_string(child), child + 1);
        twins.push_back(child);
    }
    EXPECT_EQ(Chain(index, 1, "twin"), twins);
    EXPECT_EQ(index.GetNext(1000000), 0U);
}

} // namespace
