#include "FileParts.h"

#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Fuzz::FileParts;
using MoxReadTest::Sample;

std::string fileOfManyBlocks()
{
    std::vector<MoxReadTest::TestBlock> blocks;
    for (int i = 0; i < 300; ++i)
        blocks.push_back({"Mox Tree", 0, std::to_string(i)});
    return assemble(slotsFor(blocks));
}

TEST(FileParts, JoinedAgainAFileIsTheSame)
{
    for (std::string const& file :
         {Sample().file(), fileOfManyBlocks(), Sample().file() + "rest"}) {
        auto const parts = FileParts::of(file);
        ASSERT_TRUE(parts.has_value());
        EXPECT_TRUE(parts->join() == file);
    }
}

TEST(FileParts, FollowsTheIndexFromBlockToBlock)
{
    auto const parts = FileParts::of(fileOfManyBlocks());
    ASSERT_TRUE(parts.has_value());
    ASSERT_EQ(parts->parts.size(), 420U);
    EXPECT_EQ(parts->parts[18].block, "18");
    EXPECT_TRUE(parts->parts[19].isIndexBlock());
    EXPECT_EQ(parts->parts[20].block, "19");
    EXPECT_EQ(parts->parts[301].block, "299");
    EXPECT_TRUE(parts->parts[302].isSpare());
}

TEST(FileParts, ABlockHasItsContentWhetherCompressedOrNot)
{
    Sample const sample;
    auto const parts = FileParts::of(sample.file());
    auto const plain = FileParts::of(assemble(slotsFor(sample.plainBlocks())));
    ASSERT_TRUE(parts.has_value() && plain.has_value());
    EXPECT_EQ(parts->parts[1].name(), "Mox Tree");
    EXPECT_EQ(parts->parts[1].content(), sample.tree());
    EXPECT_EQ(plain->parts[1].content(), sample.tree());
}

TEST(FileParts, ABlockThatDoesNotInflateHasNoContent)
{
    auto parts = FileParts::of(Sample().file());
    ASSERT_TRUE(parts.has_value());
    parts->parts[1].block.resize(20);
    EXPECT_EQ(parts->parts[1].content(), std::nullopt);
}

TEST(FileParts, TakesOtherContent)
{
    auto parts = FileParts::of(Sample().file());
    ASSERT_TRUE(parts.has_value());
    parts->parts[2].setContent("other");
    auto const again = FileParts::of(parts->join());
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(again->parts[2].content(), "other");
    EXPECT_EQ(again->parts[3].content(), Sample().attributeBytes());
}

TEST(FileParts, CountsWhatCompressedBlocksInflateTo)
{
    Sample const sample;
    std::size_t const expected = sample.tree().size() + sample.light().size() +
                                 sample.attributeBytes().size() + sample.resources().size() +
                                 sample.global().size() + sample.heavy().size();
    EXPECT_EQ(inflatedSizeOf(*FileParts::of(sample.file())), expected);
    EXPECT_EQ(inflatedSizeOf(*FileParts::of(assemble(slotsFor(sample.plainBlocks())))), 0U);
}

TEST(FileParts, AFileThatIsCutOffHasNone)
{
    std::string const file = Sample().file();
    EXPECT_FALSE(FileParts::of(file.substr(0, file.size() - 1)).has_value());
    EXPECT_FALSE(FileParts::of(file.substr(0, 2799)).has_value());
    EXPECT_FALSE(FileParts::of("").has_value());
}

} // namespace
