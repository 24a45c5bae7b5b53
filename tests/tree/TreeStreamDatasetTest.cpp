#include "SavedFile.h"
#include "Zyl2/Mox/Tree.h"
#include "container/Bytes.h"
#include "container/LogCapture.h"
#include "support/Environment.h"
#include "support/KeyContent.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using Support::DefaultBlockSizeSetting;
using Support::Hex;
using Support::KeyContent;
using Support::LogCapture;
using Zyl2Mox::Tree;

constexpr char const* HeavyData = "Heavy Data";

/// Bytes first, first + 1, ... in memory order.
std::vector<unsigned int> Values(std::uint32_t first, std::size_t count)
{
    std::vector<unsigned int> values;
    for (std::size_t value = 0; value < count; ++value, first += 4)
        values.push_back(first | (first + 1) << 8U | (first + 2) << 16U | (first + 3) << 24U);
    return values;
}

std::uint64_t Write(Tree& tree, std::vector<unsigned int> const& values, unsigned char width)
{
    return tree.WriteStreamDataset(values.data(), static_cast<unsigned int>(values.size() / width),
                                   width);
}

std::vector<unsigned int> Marks(Tree& tree)
{
    std::vector<unsigned int> marks;
    for (std::size_t const slot : Support::KeySlots(tree.GetFile().GetIndex(), HeavyData))
        marks.push_back(tree.GetFile().GetIndex().GetSlots().GetItem(slot).transformations);
    return marks;
}

using MarkList = std::vector<unsigned int>;

TEST(TreeStreamDataset, VectorsBecomeFourBytePlanesForEachComponent)
{
    Tree tree;
    EXPECT_EQ(Write(tree, Values(0, 6), 3), 0U);
    EXPECT_EQ(KeyContent(tree.GetFile().GetIndex(), HeavyData), Hex("00 0C 01 0D 02 0E 03 0F "
                                                                    "04 10 05 11 06 12 07 13 "
                                                                    "08 14 09 15 0A 16 0B 17 "));
}

TEST(TreeStreamDataset, FloatsAreShuffledByTheirBytes)
{
    Tree tree;
    std::array<float, 4> const values{1.0F, -2.0F, 0.5F, 3.0F};
    EXPECT_EQ(tree.WriteStreamDataset(values.data(), 2, 2), 0U);
    EXPECT_EQ(KeyContent(tree.GetFile().GetIndex(), HeavyData),
              Hex("00 00 00 00 80 00 3F 3F 00 00 00 00 00 40 C0 40 "));
}

TEST(TreeStreamDataset, GivesThePositionAtWhichTheValuesBegin)
{
    Tree tree;
    EXPECT_EQ(Write(tree, Values(0, 6), 3), 0U);
    EXPECT_EQ(Write(tree, Values(0, 4), 1), 24U);
    EXPECT_EQ(Write(tree, Values(0, 1), 1), 40U);
    EXPECT_EQ(Write(tree, Values(0, 1), 1), 44U);
}

TEST(TreeStreamDataset, ADatasetOfCount0OrWidth0WritesNothingAndGivesThePosition)
{
    Tree tree;
    float const value = 1;
    EXPECT_EQ(tree.WriteStreamDataset(&value, 0, 3), 0U);
    EXPECT_EQ(tree.WriteStreamDataset(&value, 1, 0), 0U);
    EXPECT_EQ(tree.GetFile().GetIndex().GetSlots().GetSlotCount(), 0U);
    Write(tree, Values(0, 6), 3);
    EXPECT_EQ(tree.WriteStreamDataset(static_cast<float const*>(nullptr), 0, 1), 24U);
    EXPECT_EQ(tree.WriteStreamDataset(&value, 7, 0), 24U);
    EXPECT_EQ(KeyContent(tree.GetFile().GetIndex(), HeavyData).size(), 24U);
    EXPECT_EQ(Marks(tree), MarkList{0});
}

TEST(TreeStreamDataset, ABlockIsMarkedByTheCallAfterTheOneThatBeganIt)
{
    DefaultBlockSizeSetting const setting("16");
    Tree tree;
    Write(tree, Values(0, 4), 1);
    EXPECT_EQ(Marks(tree), MarkList{0});
    Write(tree, Values(0, 2), 1);
    EXPECT_EQ(Marks(tree), (MarkList{33, 0}));
    Write(tree, Values(0, 4), 1);
    EXPECT_EQ(Marks(tree), (MarkList{33, 33}));
    Write(tree, Values(0, 4), 1);
    EXPECT_EQ(Marks(tree), (MarkList{33, 33, 0}));
}

TEST(TreeStreamDataset, OnlyHeavyDataIsMarked)
{
    Tree tree;
    tree.GetFile().GetIndex().Put("Light Data", 1U);
    Write(tree, Values(0, 4), 1);
    Write(tree, Values(0, 4), 1);
    EXPECT_EQ(tree.GetFile().GetIndex().GetSlots().GetItem(0).transformations, 0U);
    EXPECT_EQ(tree.GetFile().GetIndex().GetSlots().GetItem(1).transformations, 33U);
}

TEST(TreeStreamDataset, SaysWhatItWrites)
{
    Tree tree;
    LogCapture log;
    Write(tree, Values(0, 6), 3);
    float const value = 0;
    tree.WriteStreamDataset(&value, 5, 0);
    tree.WriteStreamDataset(&value, 0, 255);
    ASSERT_EQ(log.Texts(),
              (std::vector<std::string>{"Writing Dataset of size 6 width 3 datatype size 4",
                                        "Writing Dataset of size 0 width 0 datatype size 4",
                                        "Writing Dataset of size 0 width 255 datatype size 4"}));
    for (LogCapture::Entry const& entry : log.entries) {
        EXPECT_EQ(entry.file, "Zyl2/Mox/Tree");
        EXPECT_EQ(entry.line, 964U);
        EXPECT_EQ(entry.severity, 1);
        EXPECT_NE(entry.function.find("Zyl2Mox::Tree::WriteStreamDataset"), std::string::npos);
    }
    EXPECT_EQ(log.recordCalls, 0);
}

TEST(TreeStreamDataset, WithAStreamTheFrozenBlocksAreFlushedAfterTheWrite)
{
    Support::TemporaryFolder const folder;
    Tree tree;
    tree.GetFile().OpenFileForWriting(folder.File("a.mox"), false);
    LogCapture log;
    Write(tree, Values(0, 1), 1);
    EXPECT_EQ(log.Texts(),
              (std::vector<std::string>{"Writing Dataset of size 1 width 1 datatype size 4",
                                        "Flushing frozen blocks ... ", "Frozen blocks flushed. "}));
}

TEST(TreeStreamDataset, FullBlocksLeaveMemoryOneCallLater)
{
    DefaultBlockSizeSetting const setting("16");
    Support::TemporaryFolder const folder;
    Tree tree;
    tree.GetFile().OpenFileForWriting(folder.File("a.mox"), false);
    tree.GetFile().WriteHeader();
    Zyl2Wvf::Index& index = tree.GetFile().GetIndex();
    Write(tree, Values(0, 4), 1);
    EXPECT_FALSE(index.GetSlots().GetItem(0).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 16U);
    EXPECT_EQ(Write(tree, Values(16, 4), 1), 16U);
    EXPECT_TRUE(index.GetSlots().GetItem(0).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 0U);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetData(), nullptr);
    EXPECT_FALSE(index.GetSlots().GetItem(1).IsFrozen());
    EXPECT_EQ(Write(tree, Values(32, 2), 1), 32U);
    EXPECT_TRUE(index.GetSlots().GetItem(1).IsFrozen());
    EXPECT_EQ(Write(tree, Values(48, 1), 1), 40U);
    EXPECT_FALSE(index.GetSlots().GetItem(2).IsFrozen());
}

TEST(TreeStreamDataset, BlocksStandInTheFileInTheOrderOfTheCalls)
{
    DefaultBlockSizeSetting const setting("16");
    Support::TemporaryFolder const folder;
    std::string const path = folder.File("a.mox");
    Tree tree;
    tree.GetFile().OpenFileForWriting(path, false);
    tree.GetFile().WriteHeader();
    for (std::uint32_t call = 0; call < 4; ++call)
        EXPECT_EQ(Write(tree, Values(call * 16, 4), 2), call * 16);
    tree.FlushAndClose(tree.GetFile(), "");

    std::vector<Support::ReadSlot> const slots = Support::SavedFile(path).Slots(HeavyData);
    ASSERT_EQ(slots.size(), 4U);
    EXPECT_EQ(slots[0].offset, 2800U);
    for (std::size_t slot = 0; slot < 4; ++slot)
        EXPECT_EQ(slots[slot].transformations, slot < 3 ? 33U : 1U);
    EXPECT_EQ(Plain(slots[0]), Hex("00 08 01 09 02 0A 03 0B 04 0C 05 0D 06 0E 07 0F "));
    EXPECT_EQ(Plain(slots[1]), Hex("10 18 11 19 12 1A 13 1B 14 1C 15 1D 16 1E 17 1F "));
    EXPECT_EQ(Plain(slots[2]), Hex("20 28 21 29 22 2A 23 2B 24 2C 25 2D 26 2E 27 2F "));
    EXPECT_EQ(Plain(slots[3]), Hex("30 38 31 39 32 3A 33 3B 34 3C 35 3D 36 3E 37 3F "));
}

TEST(TreeStreamDataset, WithoutAStreamEverythingStaysInMemory)
{
    DefaultBlockSizeSetting const setting("4");
    Tree tree;
    for (std::uint32_t call = 0; call < 3; ++call)
        EXPECT_EQ(Write(tree, Values(call * 4, 1), 1), call * 4);
    EXPECT_EQ(KeyContent(tree.GetFile().GetIndex(), HeavyData),
              Hex("00 01 02 03 04 05 06 07 08 09 0A 0B "));
}

} // namespace
