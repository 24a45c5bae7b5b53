#include <read/gmsh/TagIndex.h>

#include <gtest/gtest.h>

namespace {

using Gmsh::TagIndex;

TEST(TagIndex, RowsAreFoundWhateverTheOrder)
{
    TagIndex const index({7, 3, 5000000000, 4});
    EXPECT_EQ(index.rowOf(7), 0u);
    EXPECT_EQ(index.rowOf(3), 1u);
    EXPECT_EQ(index.rowOf(5000000000), 2u);
    EXPECT_EQ(index.rowOf(4), 3u);
}

TEST(TagIndex, TagsThatAreNotThereHaveNoRow)
{
    TagIndex const index({7, 3, 4});
    for (std::size_t const tag : {0U, 1U, 2U, 5U, 6U, 8U})
        EXPECT_EQ(index.rowOf(tag), TagIndex::none) << tag;
    EXPECT_EQ(TagIndex().rowOf(1), TagIndex::none);
}

TEST(TagIndex, TagsWithoutGapsAreFoundToo)
{
    TagIndex const index({11, 12, 13});
    EXPECT_EQ(index.rowOf(11), 0u);
    EXPECT_EQ(index.rowOf(13), 2u);
    EXPECT_EQ(index.rowOf(14), TagIndex::none);
    EXPECT_EQ(index.rowOf(10), TagIndex::none);
}

} // namespace
