#include "moxread/Container.h"

#include "Bytes.h"
#include "Sample.h"
#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::Container;

namespace {

std::string contentOf(Container const& container, std::string const& key)
{
    std::vector<std::uint8_t> const bytes = container.streamBytes(key);
    return {bytes.begin(), bytes.end()};
}

} // namespace

TEST(Container, TwentySlotsFollowTheHeader)
{
    std::vector<TestBlock> const blocks = Sample().blocks();
    TemporaryFile const temporary(Sample().file());
    Container const container(temporary.path());
    ASSERT_EQ(container.slots().size(), 20U);
    MoxRead::Slot const& second = container.slots()[1];
    EXPECT_EQ(second.number, 1U);
    EXPECT_EQ(second.id, 2U);
    EXPECT_EQ(second.name, "Mox Tree");
    EXPECT_EQ(second.position, 2800 + blocks[0].block.size());
    EXPECT_EQ(second.size, blocks[1].block.size());
    EXPECT_EQ(second.transformations, 1U);
    EXPECT_EQ(second.reserved, 0U);
    EXPECT_TRUE(second.isCompressed());
    EXPECT_TRUE(container.slots()[6].isSpare());
    EXPECT_EQ(container.blockCount(), 6U);
}

TEST(Container, AKeyIsTheConcatenationOfItsInflatedBlocks)
{
    TemporaryFile const temporary(assemble(slotsFor({{"Heavy Data", 1, deflated("one ")},
                                                     {"Mox Tree", 0, "other"},
                                                     {"Heavy Data", 33, deflated("two ")},
                                                     {"Heavy Data", 0, "three"}})));
    Container const container(temporary.path());
    EXPECT_EQ(contentOf(container, "Heavy Data"), "one two three");
    EXPECT_EQ(contentOf(container, "Mox Tree"), "other");
    EXPECT_EQ(contentOf(container, "Resources"), "");
    EXPECT_EQ(container.slotsOf("Heavy Data").size(), 3U);
}

TEST(Container, AnIndexBlockListsTheSlotsThatFollow)
{
    std::vector<TestBlock> blocks;
    std::string expected;
    for (int i = 0; i < 250; ++i) {
        blocks.push_back({"Heavy Data", 0, std::to_string(i) + ","});
        expected += blocks.back().block;
    }
    TemporaryFile const temporary(assemble(slotsFor(blocks)));
    Container const container(temporary.path());
    EXPECT_EQ(container.slots().size(), 420U);
    EXPECT_TRUE(container.slots()[19].isIndexBlock());
    EXPECT_TRUE(container.slots()[219].isIndexBlock());
    EXPECT_EQ(container.blockCount(), 252U);
    EXPECT_EQ(contentOf(container, "Heavy Data"), expected);
}
