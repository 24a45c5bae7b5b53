// The layout of whole files, byte for byte; Bytes.h draws one index entry.

#include "Bytes.h"
#include "ContainerReader.h"
#include "IndexContent.h"
#include "InflatedBlock.h"
#include "TemporaryFile.h"
#include "Zyl2/Wvf/WvFile.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::DefaultBlockSizeSetting;
using Support::Entry;
using Support::Hex;
using Support::IndexBlock;
using Support::PutBytes;
using Support::ReadSlot;
using Support::Spare;

std::string const Header = Hex("89 57 56 46 0D 0A 1A 0A 31 2E 33 00");
std::string const RootIndexHead = Hex("E0 0A 00 00 14 00 00 00");

/// The file that `fill` makes.
std::string FileOf(std::function<void(WvFile&)> const& fill)
{
    Support::TemporaryFolder const folder;
    WvFile file;
    file.OpenFileForWriting(folder.File("a.mox"), false);
    file.WriteHeader();
    fill(file);
    file.GetIndex().WriteAllBuffersToFileStream(file.GetStream());
    file.CloseFile();
    return Support::ReadFile(folder.File("a.mox"));
}

/// All bytes of a key, over all its blocks.
std::string StreamOf(std::vector<ReadSlot> const& slots, std::string const& key)
{
    std::string stream;
    for (ReadSlot const& slot : slots)
        if (slot.name == key)
            stream += Support::ContentOf(slot);
    return stream;
}

TEST(IndexFile, BlocksStandBackToBackInSlotOrder)
{
    DefaultBlockSizeSetting const setting("4");
    std::string const file = FileOf([](WvFile& f) {
        f.GetIndex().Put("b", 1U);
        f.GetIndex().Put("a", std::string("xyz"));
        f.GetIndex().Put("b", 2U);
        f.GetIndex().Put("a", true);
    });
    EXPECT_EQ(file, Header + RootIndexHead + Entry(1, "b", 4, 0) + Entry(2, "a", 7, 0) +
                        Entry(3, "b", 4, 0) + Entry(4, "a", 1, 0) + Support::SpareEntries(5, 20) +
                        Hex("01 00 00 00 03 00 00 00 78 79 7A 02 00 00 00 01"));
}

TEST(IndexFile, ACompressedBlockBearsItsFlagAndItsCompressedSize)
{
    std::string const file = FileOf([](WvFile& f) {
        PutBytes(f.GetIndex(), "Key", "aaaaaaaa");
        PutBytes(f.GetIndex(), "Plain", "b");
        f.AddBlockTransformation("Key", BlockTransformationType::Compress);
    });
    std::string const block = Hex("08 00 00 00 78 9C 4B 4C 84 00 00 0D AC 03 09");
    auto const size = static_cast<std::uint32_t>(block.size());
    EXPECT_EQ(file, Header + RootIndexHead + Entry(1, "Key", size, 1) + Entry(2, "Plain", 1, 0) +
                        Support::SpareEntries(3, 20) + block + "b");
}

TEST(IndexFile, TwentyBlocksNeedOneIndexBlockInSlot19)
{
    DefaultBlockSizeSetting const setting("0");
    std::string const file = FileOf([](WvFile& f) {
        for (unsigned char put = 0; put < 20; ++put)
            f.GetIndex().Put("Key", put);
    });
    std::string expected = Header + RootIndexHead;
    for (unsigned int id = 1; id < 20; ++id)
        expected += Entry(id, "Key", 1, 0);
    expected += Entry(20, IndexBlock, 27804, 32);
    for (char put = 0; put < 19; ++put)
        expected.push_back(put);
    expected += Hex("C8 00 00 00") + Entry(21, "Key", 1, 0) + Support::SpareEntries(22, 220);
    expected += Hex("13");
    EXPECT_EQ(file, expected);
}

TEST(IndexFile, The219thBlockLandsInSlot220AndSlot219ListsTheNext200)
{
    DefaultBlockSizeSetting const setting("0");
    std::string const file = FileOf([](WvFile& f) {
        for (unsigned int put = 0; put < 219; ++put)
            f.GetIndex().Put("Key", put);
    });
    std::string expected = Header + RootIndexHead;
    for (unsigned int id = 1; id < 20; ++id)
        expected += Entry(id, "Key", 4, 0);
    expected += Entry(20, IndexBlock, 27804, 32);
    for (unsigned int put = 0; put < 19; ++put)
        expected += Support::Word(put);
    expected += Hex("C8 00 00 00");
    for (unsigned int id = 21; id < 220; ++id)
        expected += Entry(id, "Key", 4, 0);
    expected += Entry(220, IndexBlock, 27804, 32);
    for (unsigned int put = 19; put < 218; ++put)
        expected += Support::Word(put);
    // Ids are counted in one byte: slot 255 starts again at 0.
    expected += Hex("C8 00 00 00") + Entry(221, "Key", 4, 0) + Support::SpareEntries(222, 420);
    expected += Support::Word(218);
    EXPECT_TRUE(file == expected);
    ASSERT_EQ(file.size(), expected.size());
}

/// What a host does that streams datasets: mark, put, flush, mark everything at the end.
void StreamDatasets(WvFile& file, std::vector<std::string> const& datasets,
                    std::vector<BlockTransformationType> const& marks)
{
    Index& index = file.GetIndex();
    std::size_t position = 0;
    for (std::string const& dataset : datasets) {
        EXPECT_EQ(index.GetBlockPosition("Heavy Data"), position);
        for (BlockTransformationType const mark : marks)
            file.AddBlockTransformation("Heavy Data", mark);
        PutBytes(index, "Heavy Data", dataset);
        index.FlushFrozen(file.GetStream());
        position += dataset.size();
    }
    index.Put("Mox Tree", std::string("the tree"));
}

std::string DatasetNumber(std::size_t number, std::size_t length)
{
    std::string dataset = Support::Word(static_cast<std::uint32_t>(number));
    while (dataset.size() < length)
        dataset.push_back(static_cast<char>(dataset.size() * 7 + number));
    return dataset;
}

std::vector<std::string> DatasetsBeyondTheLimit(std::size_t count)
{
    std::vector<std::string> datasets;
    for (std::size_t number = 0; number < count; ++number)
        datasets.push_back(DatasetNumber(number, 12 + number % 5));
    return datasets;
}

std::string Joined(std::vector<std::string> const& texts)
{
    std::string joined;
    for (std::string const& text : texts)
        joined += text;
    return joined;
}

void ExpectStreamed(std::vector<std::string> const& datasets,
                    std::vector<BlockTransformationType> const& marks,
                    std::vector<std::size_t> const& indexBlocks)
{
    DefaultBlockSizeSetting const setting("10");
    std::string const file = FileOf([&](WvFile& f) {
        StreamDatasets(f, datasets, marks);
        f.AddBlockTransformation("Mox Tree", BlockTransformationType::Compress);
    });
    EXPECT_EQ(file.substr(0, 20), Header + RootIndexHead);
    std::vector<ReadSlot> const slots = Support::ReadSlots(file);
    EXPECT_EQ(Support::SlotsOf(slots, IndexBlock), indexBlocks);
    EXPECT_EQ(StreamOf(slots, "Heavy Data"), Joined(datasets));
    EXPECT_EQ(StreamOf(slots, "Mox Tree"), Hex("08 00 00 00") + "the tree");
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        EXPECT_EQ(slots[slot].id, (slot + 1) % 256);
    for (std::size_t const slot : indexBlocks) {
        EXPECT_EQ(slots[slot].size, 27804U);
        EXPECT_EQ(slots[slot].transformations, 32U);
        EXPECT_EQ(Support::WordAt(slots[slot].content, 0), 200U);
    }
}

std::vector<BlockTransformationType> const Frozen{BlockTransformationType::Freeze};
std::vector<BlockTransformationType> const FrozenAndCompressed{BlockTransformationType::Freeze,
                                                               BlockTransformationType::Compress};

TEST(IndexFile, TwentyFiveDatasetsBeyondTheLimitStandBackToBackFrom2800)
{
    std::vector<std::string> const datasets = DatasetsBeyondTheLimit(25);
    ExpectStreamed(datasets, Frozen, {19});
    ExpectStreamed(datasets, FrozenAndCompressed, {19});

    DefaultBlockSizeSetting const setting("10");
    std::string const file = FileOf([&](WvFile& f) { StreamDatasets(f, datasets, Frozen); });
    std::vector<std::string> const first(datasets.begin(), datasets.begin() + 19);
    std::vector<std::string> const rest(datasets.begin() + 19, datasets.end());
    std::size_t const indexAt = 2800 + Joined(first).size();
    EXPECT_EQ(file.substr(2800, Joined(first).size()), Joined(first));
    EXPECT_EQ(file.substr(indexAt, 4), Hex("C8 00 00 00"));
    EXPECT_EQ(file.substr(indexAt + 4, 139),
              Entry(21, "Heavy Data", static_cast<std::uint32_t>(datasets[19].size()), 32));
    EXPECT_EQ(file.substr(indexAt + 27804), Joined(rest) + Hex("08 00 00 00") + "the tree");
}

TEST(IndexFile, The20thBlockFlushedEarlyDoesNotOverwriteTheStartOfTheFile)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    WvFile file;
    file.OpenFileForWriting(folder.File("a.mox"), false);
    file.WriteHeader();
    StreamDatasets(file, DatasetsBeyondTheLimit(25), Frozen);
    std::fflush(file.GetStream());
    // Nothing but the header stands before 2800 until everything is saved.
    EXPECT_EQ(Support::ReadFile(folder.File("a.mox")).substr(0, 2800),
              Header + Support::Zeros(2788));
    Index& index = file.GetIndex();
    ASSERT_TRUE(index.GetSlots().GetItem(20).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetItem(20).position,
              index.GetSlots().GetItem(18).position + index.GetSlots().GetItem(18).size + 27804);
}

TEST(IndexFile, FourHundredFiftyDatasetsBeyondTheLimitReadBack)
{
    ExpectStreamed(DatasetsBeyondTheLimit(450), Frozen, {19, 219, 419});
    ExpectStreamed(DatasetsBeyondTheLimit(450), FrozenAndCompressed, {19, 219, 419});
}

TEST(IndexFile, DatasetsBelowAndBeyondTheLimitReadBackInOneFile)
{
    std::vector<std::string> datasets;
    for (std::size_t number = 0; number < 900; ++number)
        datasets.push_back(DatasetNumber(number, number % 3 == 0 ? 4 : 4 + number % 13));
    ExpectStreamed(datasets, Frozen, {19, 219, 419});
    ExpectStreamed(datasets, FrozenAndCompressed, {19, 219, 419});
}

TEST(IndexFile, ASpareSlotThatIsMarkedForCompressionStillReadsBack)
{
    std::string const file = FileOf([](WvFile& f) {
        f.GetIndex().Put("Key", true);
        f.AddBlockTransformation(Spare, BlockTransformationType::Compress);
    });
    std::vector<ReadSlot> const slots = Support::ReadSlots(file);
    std::string const block = Hex("00 00 00 00 78 9C 03 00 00 00 00 01");
    EXPECT_EQ(slots[1].content, block);
    EXPECT_EQ(slots[19].offset, 2801U + 18 * block.size());
}

} // namespace
