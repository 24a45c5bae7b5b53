#include "Zyl2/Wvf/Index.h"
#include "Bytes.h"
#include "ContainerReader.h"
#include "FailingAllocation.h"
#include "IndexContent.h"
#include "InflatedBlock.h"
#include "TemporaryFile.h"
#include "support/Environment.h"
#include "support/KeyContent.h"
#include "support/ThrowSite.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::Content;
using Support::DefaultBlockSizeSetting;
using Support::Hex;
using Support::IndexBlock;
using Support::PutBytes;
using Support::Spare;
using Zyl2::Exception::FileWriteException;
using Zyl2::Exception::InvalidObjectState;
using Zyl2::Exception::KeyNotFound;
using Zyl2::Exception::MemoryAllocationException;
using Zyl2::Exception::MiscelleneousException;
using Zyl2::Exception::NotYetImplemented;

Support::Stream PipeWithoutReader()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    close(ends[0]);
    return Support::Stream(fdopen(ends[1], "wb"));
}

TEST(Index, AReservedNameIsRecognisedByItsFirst13Bytes)
{
    EXPECT_TRUE(Index::IsAnIndexBlock(IndexBlock));
    EXPECT_TRUE(Index::IsAnIndexBlock(IndexBlock + "and more"));
    EXPECT_FALSE(Index::IsAnIndexBlock(IndexBlock.substr(0, 12)));
    EXPECT_FALSE(Index::IsAnIndexBlock("Index Block "));
    EXPECT_FALSE(Index::IsAnIndexBlock(Spare));
}

TEST(Index, TheLastSlotOfEveryGroupBecomesAnIndexBlock)
{
    Index index(12);
    std::vector<std::size_t> taken;
    taken.reserve(450);
    for (int block = 0; block < 450; ++block)
        taken.push_back(index.AddBlock("Key"));
    std::vector<std::size_t> expected;
    for (std::size_t slot = 0; slot < 453; ++slot)
        if (slot != 19 && slot != 219 && slot != 419)
            expected.push_back(slot);
    EXPECT_EQ(taken, expected);
    EXPECT_EQ(index.GetLimiter(IndexBlock).limit, 27804U);
    EXPECT_EQ(index.GetLimiter(IndexBlock).blocks, (std::vector<std::size_t>{19, 219, 419}));
    EXPECT_EQ(index.GetSlots().GetSlotCount(), 620U);
    for (std::size_t const slot : {std::size_t(19), std::size_t(219), std::size_t(419)}) {
        EXPECT_EQ(index.GetSlots().GetItem(slot).size, 27804U);
        EXPECT_EQ(index.GetSlots().GetItem(slot).transformations, 32);
    }
}

TEST(Index, CreateBlockAppendsASlotWhateverThePoolHolds)
{
    Index index(12);
    index.AddBlock("a");
    EXPECT_EQ(index.CreateBlock("b"), 20U);
    EXPECT_EQ(index.GetSlots().GetItem(20).name, "b");
    EXPECT_EQ(index.GetSlots().GetItem(20).id, 21);
    EXPECT_EQ(index.GetLimiter("b").blocks, std::vector<std::size_t>{20});
    EXPECT_EQ(index.GetWritingBlockIndex("b"), 20U);
}

TEST(Index, CreateEmptyBlocksReversesTheWholePoolAndGivesTheTablesLength)
{
    Index index(12);
    EXPECT_EQ(index.CreateEmptyBlocks(3), 139U * 3 + 4);
    EXPECT_EQ(index.GetLimiter(Spare).blocks, (std::vector<std::size_t>{2, 1, 0}));
    EXPECT_EQ(index.CreateEmptyBlocks(2), 139U * 2 + 4);
    EXPECT_EQ(index.GetLimiter(Spare).blocks, (std::vector<std::size_t>{4, 3, 0, 1, 2}));
    EXPECT_EQ(index.CreateEmptyBlocks(0), 4U);
    EXPECT_EQ(index.GetLimiter(Spare).blocks, (std::vector<std::size_t>{2, 1, 0, 3, 4}));
}

TEST(Index, CreatingNoEmptyBlocksBeforeThereIsAPoolMakesNone)
{
    Index index(12);
    EXPECT_EQ(index.CreateEmptyBlocks(0), 4U);
    EXPECT_EQ(index.GetSlots().GetSlotCount(), 0U);
    EXPECT_EQ(index.AddBlock("a"), 0U);
    EXPECT_EQ(index.GetSlots().GetSlotCount(), 20U);
}

TEST(Index, AddingABlockWithTheSpareNameAppendsASpareSlot)
{
    Index index(12);
    index.AddBlock("a");
    EXPECT_EQ(index.AddBlock(Spare), 20U);
    EXPECT_EQ(index.GetLimiter(Spare).blocks.back(), 20U);
    EXPECT_EQ(index.AddBlock(Spare + "x"), 21U);
    EXPECT_EQ(index.GetLimiter(Spare + "x").blocks, std::vector<std::size_t>{21});
}

TEST(Index, TheIndexBlocksKeepALimitThatTheyAlreadyHave)
{
    DefaultBlockSizeSetting const setting("123456");
    Index index(12);
    index.CreateBlock(IndexBlock);
    for (int block = 0; block < 20; ++block)
        index.AddBlock("Key");
    EXPECT_EQ(index.GetLimiter(IndexBlock).limit, 123456U);
}

TEST(Index, ThePoolThatRanDryIsReported)
{
    Index index(12);
    index.AddBlock("a");
    index.GetLimiter(Spare).blocks.clear();
    Support::expectThrown<InvalidObjectState>(
        [&index] { index.AddBlock("b"); },
        {17, "This point should not be reached", "Zyl2Wvf::Index", "Zyl2/Wvf/Index"});
}

TEST(Index, AskingForTheLimiterOfAnUnknownKeyIsRefused)
{
    Index index(12);
    Support::expectThrown<KeyNotFound>(
        [&index] { index.GetLimiter("unknown"); },
        {14, "Key not found", "Zyl2Wvf::Index::GetLimiter", "Zyl2/Wvf/Index"});
}

TEST(Index, ABlockThatHasExactlyItsLimitIsFull)
{
    DefaultBlockSizeSetting const setting("8");
    Index index(12);
    PutBytes(index, "Key", "1234567");
    EXPECT_EQ(index.GetWritingBlockIndex("Key"), 0U);
    PutBytes(index, "Key", "8");
    EXPECT_EQ(index.GetWritingBlockIndex("Key"), 1U);
}

TEST(Index, ASinglePutIsNeverSplit)
{
    DefaultBlockSizeSetting const setting("10");
    Index index(12);
    PutBytes(index, "Key", "123456789");
    PutBytes(index, "Key", std::string(100, 'x'));
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 109U);
    EXPECT_EQ(index.GetLimiter("Key").blocks.size(), 1U);
}

TEST(Index, AKeysLimitIsTheOneOfItsFirstBlock)
{
    DefaultBlockSizeSetting setting("10");
    Index index(12);
    index.Put("Key", 1UL);
    setting.Set("1000");
    index.Put("Key", 2UL);
    index.Put("Other", 1UL);
    EXPECT_EQ(index.GetLimiter("Key").limit, 10U);
    EXPECT_EQ(index.GetLimiter("Other").limit, 1000U);
}

TEST(Index, PutEncodesEveryType)
{
    Index index(12);
    index.Put("Key", -2);
    index.Put("Key", 0x04030201U);
    index.Put("Key", 0x0807060504030201UL);
    index.Put("Key", static_cast<unsigned char>(7));
    index.Put("Key", 1.0F);
    index.Put("Key", true);
    index.Put("Key", std::string("ab"));
    index.Put("Key", std::string());
    index.Put("Key", std::vector<unsigned int>{1, 2});
    index.Put("Key", std::vector<std::string>{"c", ""});
    PutBytes(index, "Key", "raw");
    unsigned char* const place = index.PutInPlace("Key", 2);
    place[0] = 0xAA;
    place[1] = 0xBB;
    EXPECT_EQ(Content(index.GetSlots().GetBlock(0)), Hex("FE FF FF FF "
                                                         "01 02 03 04 "
                                                         "01 02 03 04 05 06 07 08 "
                                                         "07 "
                                                         "00 00 80 3F "
                                                         "01 "
                                                         "02 00 00 00 61 62 "
                                                         "00 00 00 00 "
                                                         "02 00 00 00 01 00 00 00 02 00 00 00 "
                                                         "02 00 00 00 01 00 00 00 63 00 00 00 00 "
                                                         "72 61 77 "
                                                         "AA BB"));
}

TEST(Index, TheBlockPositionOfAKeyNeverWrittenIsZero)
{
    Index index(12);
    EXPECT_EQ(index.GetBlockPosition("never"), 0U);
    EXPECT_EQ(index.GetSlots().GetSlotCount(), 0U) << "asking creates nothing";
}

TEST(Index, TheBlockPositionIsTheSumOverAllBlocksOfTheKey)
{
    DefaultBlockSizeSetting const setting("10");
    Index index(12);
    for (std::size_t value = 0; value < 7; ++value) {
        EXPECT_EQ(index.GetBlockPosition("Key"), value * 8);
        index.Put("Key", 1UL);
        index.Put("Other", 1U);
    }
    EXPECT_EQ(index.GetBlockPosition("Key"), 56U);
    EXPECT_EQ(index.GetBlockPosition("Other"), 28U);
}

TEST(Index, TheBlockPositionCountsUntransformedBytesOfFrozenBlocks)
{
    DefaultBlockSizeSetting const setting("100");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    PutBytes(index, "Key", std::string(500, 'x'));
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    index.AddTransformation("Key", BlockTransformationType::Compress);
    index.FlushFrozen(stream.get());
    ASSERT_TRUE(index.GetSlots().GetItem(0).IsFrozen());
    EXPECT_LT(index.GetSlots().GetItem(0).size, 500U);
    EXPECT_EQ(index.GetSlots().GetItem(0).contentLength, 500U);
    EXPECT_EQ(index.GetBlockPosition("Key"), 500U);
    PutBytes(index, "Key", "abc");
    EXPECT_EQ(index.GetBlockPosition("Key"), 503U);
}

TEST(Index, TheBlockPositionFollowsTheCursorOfTheLastBlock)
{
    Index index(12);
    index.Put("Key", 1UL);
    index.GetSlots().GetBlock(0).SetPosition(3);
    EXPECT_EQ(index.GetBlockPosition("Key"), 3U);
}

TEST(Index, MarkingReachesTheBlocksThatTheKeyHasNowAndNoLaterOnes)
{
    DefaultBlockSizeSetting const setting("1");
    Index index(12);
    index.Put("Key", 1U);
    index.Put("Other", 1U);
    index.AddTransformation("Key", BlockTransformationType::Compress);
    index.Put("Key", 2U);
    EXPECT_EQ(index.GetSlots().GetItem(0).transformations, 1);
    EXPECT_EQ(index.GetSlots().GetItem(1).transformations, 0);
    EXPECT_EQ(index.GetSlots().GetItem(2).transformations, 0);
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    EXPECT_EQ(index.GetSlots().GetItem(0).transformations, 33);
    EXPECT_EQ(index.GetSlots().GetItem(2).transformations, 32);
    index.AddTransformation("Key", BlockTransformationType::Compress);
    EXPECT_EQ(index.GetSlots().GetItem(2).transformations, 33);
}

TEST(Index, MarkingAnUnknownKeyDoesNothing)
{
    Index index(12);
    index.AddTransformation("unknown", BlockTransformationType::Compress);
    EXPECT_EQ(index.GetSlots().GetSlotCount(), 0U);
    index.Put("unknown", 1U);
    EXPECT_EQ(index.GetSlots().GetItem(0).transformations, 0);
}

TEST(Index, MarkingTheSpareNameReachesAllThatAreSpareNow)
{
    Index index(12);
    index.AddBlock("a");
    index.AddTransformation(Spare, BlockTransformationType::Compress);
    index.AddBlock("b");
    index.AddBlock(Spare);
    index.AddTransformation(Spare, BlockTransformationType::Compress);
    EXPECT_EQ(index.GetSlots().GetItem(0).transformations, 0);
    for (std::size_t slot = 1; slot < 21; ++slot)
        EXPECT_EQ(index.GetSlots().GetItem(slot).transformations, 1) << slot;
}

TEST(Index, ATypedPutIntoAFrozenBlockIsRefused)
{
    Index index(12);
    index.AddBlock("Key");
    index.GetSlots().GetItem(1).state = Zyl2Wvf::IndexItem::State::Frozen;
    index.GetSlots().GetItem(2).state = Zyl2Wvf::IndexItem::State::Frozen;
    Support::expectThrown<MiscelleneousException>(
        [&index] { index.Put("Other", 1U); },
        {2, "Attempt to write into a frozen block", "Zyl2Wvf::Index::Put", "Zyl2/Wvf/Index"});
    Support::expectThrown<MiscelleneousException>(
        [&index] { index.Put("Another", std::string("text")); },
        {2, "Attempt to write into a frozen block", "Zyl2Wvf::Index::Put", "Zyl2/Wvf/Index"});
    EXPECT_EQ(index.GetSlots().GetBlock(1).GetLength(), 0U);
    EXPECT_EQ(index.GetSlots().GetBlock(2).GetLength(), 0U);
}

TEST(Index, ARawPutIntoAFrozenBlockReportsAnUnknownKeyInstead)
{
    Index index(12);
    index.AddBlock("Key");
    index.GetSlots().GetItem(1).state = Zyl2Wvf::IndexItem::State::Frozen;
    index.GetSlots().GetItem(2).state = Zyl2Wvf::IndexItem::State::Frozen;
    Support::expectThrown<KeyNotFound>(
        [&index] { PutBytes(index, "Other", "raw"); },
        {14, "Key not found", "Zyl2Wvf::Index::Put", "Zyl2/Wvf/Index"});
    Support::expectThrown<KeyNotFound>(
        [&index] { index.PutInPlace("Another", 3); },
        {14, "Key not found", "Zyl2Wvf::Index::Put", "Zyl2/Wvf/Index"});
    EXPECT_EQ(index.GetSlots().GetBlock(1).GetLength(), 0U);
}

TEST(Index, AKeyThatGoesOnAfterASavedBlockGetsThatBlocksBuffer)
{
    DefaultBlockSizeSetting const setting("5000000");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    std::string const full(5000000, 'x');
    PutBytes(index, "Key", full);
    unsigned char const* const buffer = index.GetSlots().GetBlock(0).GetData();
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    index.AddTransformation("Key", BlockTransformationType::Compress);
    PutBytes(index, "Key", full);
    EXPECT_NE(index.GetSlots().GetBlock(1).GetData(), buffer);
    index.FlushFrozen(stream.get());
    PutBytes(index, "Other", "a");
    EXPECT_NE(index.GetSlots().GetBlock(2).GetData(), buffer);
    PutBytes(index, "Key", "abc");
    EXPECT_EQ(index.GetSlots().GetBlock(3).GetData(), buffer);
    EXPECT_EQ(Content(index.GetSlots().GetBlock(3)), "abc");
}

/// Puts five blocks of 500 bytes under a key; gives the file.
std::string FileOfFullBlocks(std::string const& path, bool compressesThem)
{
    Index index(12);
    if (compressesThem)
        index.CompressFullBlocks("Key");
    for (char const letter : {'a', 'b', 'c', 'd', 'e'})
        PutBytes(index, "Key", std::string(500, letter));
    PutBytes(index, "Other", std::string(500, 'f'));
    index.AddTransformation("Key", BlockTransformationType::Compress);
    Support::Stream stream = Support::OpenStream(path, "wb");
    index.WriteAllBuffersToFileStream(stream.get());
    stream.reset();
    return Support::ReadFile(path);
}

TEST(Index, AFullBlockIsCompressedWhenTheNextIsBegunIfItsKeyIsToBe)
{
    DefaultBlockSizeSetting const setting("500");
    Index index(12);
    index.CompressFullBlocks("Key");
    PutBytes(index, "Key", std::string(500, 'x'));
    PutBytes(index, "Other", std::string(500, 'x'));
    PutBytes(index, "Other", "y");
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 500U);
    PutBytes(index, "Key", "abc");
    EXPECT_LT(index.GetSlots().GetBlock(0).GetLength(), 100U);
    EXPECT_EQ(index.GetSlots().GetBlock(1).GetLength(), 500U);
    EXPECT_EQ(Content(index.GetSlots().GetBlock(3)), "abc");
    EXPECT_EQ(index.GetBlockPosition("Key"), 503U);
    PutBytes(index, "Key", std::string(497, 'x'));
    PutBytes(index, "Key", "abc");
    EXPECT_EQ(index.GetBlockPosition("Key"), 1003U);
}

/// What a reader makes of a file, slot by slot.
std::vector<std::string> ContentsOf(std::string const& file)
{
    std::vector<std::string> contents;
    for (Support::ReadSlot const& slot : Support::ReadSlots(file))
        contents.push_back(std::to_string(slot.id) + slot.name + ' ' +
                           std::to_string(slot.transformations) + ' ' + Support::ContentOf(slot));
    return contents;
}

TEST(Index, WhenAFullBlockIsCompressedLeavesNoTraceInTheFile)
{
    DefaultBlockSizeSetting const setting("500");
    Support::TemporaryFolder const folder;
    std::string const early = FileOfFullBlocks(folder.File("early"), true);
    EXPECT_EQ(ContentsOf(early)[4], "5Key 1 " + std::string(500, 'e'));
    std::string const late = FileOfFullBlocks(folder.File("late"), false);
    EXPECT_TRUE(early == late);
}

TEST(Index, ACompressedBlockLeavesItsBufferToTheNextOfItsKey)
{
    DefaultBlockSizeSetting const setting("5000000");
    Index index(12);
    index.CompressFullBlocks("Key");
    PutBytes(index, "Key", std::string(5000000, 'x'));
    unsigned char const* const buffer = index.GetSlots().GetBlock(0).GetData();
    PutBytes(index, "Key", "abc");
    EXPECT_EQ(index.GetSlots().GetBlock(1).GetData(), buffer);
    EXPECT_LT(index.GetSlots().GetBlock(0).GetCapacity(), 5000000U);
}

TEST(Index, APutThatWouldPassFourGibibytesGoesToANewBlock)
{
    DefaultBlockSizeSetting const setting("4294967294");
    Index index(12);
    index.AddBlock("typed");
    index.AddBlock("raw");
    index.AddBlock("in place");
    // Pages that nobody touches take no memory.
    for (std::size_t slot = 0; slot < 3; ++slot) {
        Zyl2Util::Buffer buffer;
        ASSERT_TRUE(buffer.Grow(4294967295U));
        index.GetSlots().GetBlock(slot).Adopt(std::move(buffer), 4294967290U);
    }
    // The new blocks need not take 4 GiB of address space.
    Support::DefaultBlockSizeSetting const smallStep("16");
    index.Put("typed", 0x0807060504030201UL);
    PutBytes(index, "raw", "abcdef");
    index.PutInPlace("in place", 6)[0] = 'a';
    EXPECT_EQ(Content(index.GetSlots().GetBlock(3)), Hex("01 02 03 04 05 06 07 08"));
    EXPECT_EQ(Content(index.GetSlots().GetBlock(4)), "abcdef");
    EXPECT_EQ(index.GetLimiter("in place").blocks, (std::vector<std::size_t>{2, 5}));
    EXPECT_EQ(index.GetBlockPosition("typed"), 4294967298U);
    EXPECT_EQ(index.GetBlockPosition("raw"), 4294967296U);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 4294967290U);
}

TEST(Index, APutThatNoBlockCanHoldIsRefused)
{
    Index index(12);
    index.Put("Key", 1U);
    void const* const nothing = nullptr;
    Support::expectThrown<MemoryAllocationException>(
        [&] { index.Put("Key", nothing, std::size_t(4294967296U)); },
        {16, "Memory allocation error", "Zyl2Wvf::Block", "Zyl2/Wvf/Block"});
    EXPECT_EQ(index.GetLimiter("Key").blocks.size(), 1U);
    index.Put("Key", 2U);
    EXPECT_EQ(Content(index.GetSlots().GetBlock(0)), Hex("01 00 00 00 02 00 00 00"));
}

TEST(Index, ASavedBlockIsReleasedAndOnlyAMarkedOneFreezes)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    index.Put("Key", 1U);
    index.WriteBufferToFileStream(0, stream.get());
    EXPECT_FALSE(index.GetSlots().GetItem(0).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetItem(0).size, 4U);
    EXPECT_EQ(index.GetSlots().GetItem(0).position, 2800U);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetData(), nullptr);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetLength(), 0U);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetCapacity(), 0U);
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetPosition(), 0U);
}

TEST(Index, AFullDiskIsReportedAtTheLatestWhenEverythingIsSaved)
{
    Support::Stream const full = Support::OpenStream("/dev/full", "wb");
    Index index(12);
    index.AddBlock("Key");
    // With all blocks saved before, the root index alone is left, and it stays in the stream's
    // buffer until the end.
    for (std::size_t slot = 0; slot < 20; ++slot)
        index.GetSlots().GetItem(slot).state = Zyl2Wvf::IndexItem::State::Frozen;
    Support::expectThrown<FileWriteException>(
        [&] { index.WriteAllBuffersToFileStream(full.get()); },
        {7, "Unable to write to file", "Zyl2Wvf::Index::WriteAllBuffersToFileStream",
         "Zyl2/Wvf/Index"});
}

TEST(Index, AnEarlierFailureIsNotForgottenWhenEverythingIsSaved)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Index index(12);
    PutBytes(index, "Key", std::string(16, 'x'));
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    {
        Support::Stream const pipe = PipeWithoutReader();
        EXPECT_THROW(index.FlushFrozen(pipe.get()), FileWriteException);
    }
    Support::Stream const good = Support::OpenStream(folder.File("a"), "wb");
    Support::expectThrown<FileWriteException>(
        [&] { index.WriteAllBuffersToFileStream(good.get()); },
        {7, "Unable to write to file", "Zyl2Wvf::Index::WriteAllBuffersToFileStream",
         "Zyl2/Wvf/Index"});
}

TEST(Index, SavingEverythingNeedsAtLeastOneBlock)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    Support::expectThrown<InvalidObjectState>(
        [&] { index.WriteAllBuffersToFileStream(stream.get()); },
        {17, "Invalid object state", "Zyl2Wvf::Index::WriteAllBuffersToFileStream",
         "Zyl2/Wvf/Index"});
}

TEST(Index, AnIndexBlockIsMadeAnewOnceAndThenKeepsItsBuffer)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    for (int block = 0; block < 20; ++block)
        index.AddBlock("Key");
    EXPECT_NE(index.GetSlots().GetItem(19).state, Zyl2Wvf::IndexItem::State::Rewritten);
    index.WriteAllBuffersToFileStream(stream.get());
    EXPECT_EQ(index.GetSlots().GetItem(19).state, Zyl2Wvf::IndexItem::State::Rewritten);
    EXPECT_TRUE(index.GetSlots().GetItem(19).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetItem(19).contentLength, 27804U);
    EXPECT_EQ(index.GetSlots().GetBlock(19).GetLength(), 27804U);

    unsigned char const* const data = index.GetSlots().GetBlock(19).GetData();
    index.GetSlots().GetItem(20).size = 7;
    index.WriteIndexBufferToFileStream(19, stream.get());
    EXPECT_EQ(index.GetSlots().GetBlock(19).GetData(), data);
    EXPECT_EQ(Content(index.GetSlots().GetBlock(19)), Hex("C8 00 00 00") +
                                                          Support::Entry(21, "Key", 7, 0) +
                                                          Support::SpareEntries(22, 220));
}

TEST(Index, AnIndexBlockWithFewerThan200FollowersIsRefused)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    for (int block = 0; block < 20; ++block)
        index.AddBlock("Key");
    ASSERT_EQ(index.GetSlots().GetSlotCount(), 220U);
    EXPECT_NO_THROW(index.WriteIndexBufferToFileStream(19, stream.get()));
    for (std::size_t const slot : {20U, 215U, 219U})
        Support::expectThrown<InvalidObjectState>(
            [&] { index.WriteIndexBufferToFileStream(slot, stream.get()); },
            {17, "Invalid object state", "Zyl2Wvf::Index", "Zyl2/Wvf/Index"});
}

TEST(Index, FlushingAFullBlockBeforeAnEarlierOneIsNotImplemented)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    index.Put("Early", 1U);
    PutBytes(index, "Full", std::string(16, 'x'));
    index.AddTransformation("Full", BlockTransformationType::Freeze);
    Support::expectThrown<NotYetImplemented>(
        [&] { index.FlushFrozen(stream.get()); },
        {20, "Not yet implemented", "Zyl2Wvf::Index::FlushFrozen", "Zyl2/Wvf/Index"});
    EXPECT_FALSE(index.GetSlots().GetItem(1).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetBlock(1).GetLength(), 16U);
}

TEST(Index, FlushingSavesOnlyFullBlocksThatAreMarked)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    PutBytes(index, "Key", std::string(10, 'x')); // as long as the limit: full
    PutBytes(index, "Key", std::string(9, 'y'));
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    PutBytes(index, "Unmarked", std::string(20, 'z'));
    index.FlushFrozen(stream.get());
    EXPECT_TRUE(index.GetSlots().GetItem(0).IsFrozen());
    EXPECT_FALSE(index.GetSlots().GetItem(1).IsFrozen());
    EXPECT_FALSE(index.GetSlots().GetItem(2).IsFrozen());
    std::fflush(stream.get());
    EXPECT_EQ(Support::ReadFile(folder.File("a")), Support::Zeros(2800) + std::string(10, 'x'));
}

TEST(Index, FlushingGoesThroughTheKeysInTheirOrder)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    // "b" stands behind "a" in the order of keys, but before it in the file.
    PutBytes(index, "b", std::string(16, 'b'));
    PutBytes(index, "a", std::string(16, 'a'));
    index.AddTransformation("a", BlockTransformationType::Freeze);
    index.AddTransformation("b", BlockTransformationType::Freeze);
    EXPECT_THROW(index.FlushFrozen(stream.get()), NotYetImplemented);
    EXPECT_FALSE(index.GetSlots().GetItem(0).IsFrozen());
}

TEST(Index, FlushingSkipsSpareAndIndexBlocks)
{
    DefaultBlockSizeSetting const setting("0");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    for (int block = 0; block < 20; ++block)
        index.AddBlock("Key");
    index.AddTransformation(Spare, BlockTransformationType::Freeze);
    EXPECT_NO_THROW(index.FlushFrozen(stream.get()));
    EXPECT_FALSE(index.GetSlots().GetItem(19).IsFrozen());
    EXPECT_FALSE(index.GetSlots().GetItem(21).IsFrozen());
    EXPECT_EQ(index.GetSlots().GetBlock(19).GetLength(), 27804U);
}

/// Whether the compressor was what the n-th allocation failed for.
bool CompressorFails(Index& index, std::FILE* stream, std::size_t allocation)
{
    Support::FailingAllocation const failing(allocation);
    try {
        index.WriteBufferToFileStream(0, stream);
    } catch (MemoryAllocationException const&) {
        return true;
    }
    return false;
}

TEST(Index, ABlockThatCannotBeCompressedForLackOfMemoryCanBeSavedLater)
{
    Support::TemporaryFolder const folder;
    // The log records need memory too, how often is none of this test's business.
    for (std::size_t allocation = 0; allocation < 100; ++allocation) {
        Support::Stream stream = Support::OpenStream(folder.File("a"), "wb");
        Index index(12);
        PutBytes(index, "Key", "aaaaaaaa");
        index.AddTransformation("Key", BlockTransformationType::Compress);
        if (!CompressorFails(index, stream.get(), allocation))
            continue;
        EXPECT_EQ(Content(index.GetSlots().GetBlock(0)), "aaaaaaaa");
        index.WriteAllBuffersToFileStream(stream.get());
        stream.reset();
        EXPECT_EQ(Support::ReadSlots(Support::ReadFile(folder.File("a")))[0].content,
                  Hex("08 00 00 00 78 9C 4B 4C 84 00 00 0D AC 03 09"));
        return;
    }
    FAIL() << "no allocation of the compressor was met";
}

/// Puts 41 values into blocks of their own; the n-th allocation of one of the puts fails, and that
/// put is then repeated. Gives the file, and whether the allocation was met.
std::pair<std::string, bool> FileWithAFailure(std::string const& path, int failingPut,
                                              std::size_t allocation)
{
    Index index(12);
    bool failed = false;
    for (int put = 0; put < 41; ++put) {
        if (put == failingPut) {
            Support::FailingAllocation const failing(allocation);
            try {
                index.Put("Key", static_cast<unsigned int>(put));
            } catch (std::bad_alloc const&) {
                failed = true;
            } catch (MemoryAllocationException const&) {
                failed = true;
            }
        }
        if (put != failingPut || failed)
            index.Put("Key", static_cast<unsigned int>(put));
    }
    Support::Stream stream = Support::OpenStream(path, "wb");
    index.WriteAllBuffersToFileStream(stream.get());
    stream.reset();
    return {Support::ReadFile(path), failed};
}

TEST(Index, CanGoOnAfterAnyFailedAllocation)
{
    DefaultBlockSizeSetting const setting("1");
    Support::TemporaryFolder const folder;
    std::string const expected = FileWithAFailure(folder.File("a"), -1, 0).first;
    ASSERT_EQ(Support::ReadSlots(expected).size(), 220U);
    // The puts that make the pool, take a slot, make an index block, and follow it.
    for (int const put : {0, 1, 19, 20}) {
        std::size_t allocation = 0;
        for (bool failed = true; failed; ++allocation) {
            ASSERT_LT(allocation, 1000U);
            auto const [file, met] = FileWithAFailure(folder.File("a"), put, allocation);
            EXPECT_TRUE(file == expected) << "put " << put << ", allocation " << allocation;
            failed = met;
        }
        EXPECT_GT(allocation, 1U) << "no allocation failed in put " << put;
    }
}

/// Whether the n-th allocation was asked for while the texts were put.
bool PutFails(Index& index, std::vector<std::string> const& texts, std::size_t allocation)
{
    Support::FailingAllocation const failing(allocation);
    try {
        index.Put("Key", texts);
    } catch (MemoryAllocationException const&) {
        return true;
    } catch (std::bad_alloc const&) {
        return true;
    }
    return false;
}

TEST(Index, AValueThatWasPutInPartKeepsTheFileFromPassingForWhole)
{
    DefaultBlockSizeSetting const setting("4");
    Support::TemporaryFolder const folder;
    std::vector<std::string> const texts{"one", "two", "three"};
    bool wasPutInPart = false;
    bool wasNotPut = false;
    std::size_t allocation = 0;
    for (bool failed = true; failed; ++allocation) {
        Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
        Index index(12);
        index.Put("Other Key", true);
        failed = PutFails(index, texts, allocation);
        std::size_t const length = Support::KeyContent(index, "Key").size();
        if (failed && length != 0) {
            wasPutInPart = true;
            EXPECT_THROW(index.WriteAllBuffersToFileStream(stream.get()), FileWriteException);
        } else {
            wasNotPut = wasNotPut || length == 0;
            EXPECT_NO_THROW(index.WriteAllBuffersToFileStream(stream.get()));
        }
    }
    EXPECT_TRUE(wasPutInPart);
    EXPECT_TRUE(wasNotPut);
}

TEST(Index, WhatIsPutTogetherGoesOnWhereTheLastPutEnded)
{
    Index index(12);
    PutBytes(index, "Key", "abc");
    Index::Key key("Key");
    unsigned char* const place = index.PutTogether(key, 4);
    ASSERT_NE(place, nullptr);
    std::copy_n("defg", 4, place);
    PutBytes(index, "Key", "h");
    EXPECT_EQ(Support::KeyContent(index, "Key"), "abcdefgh");
    EXPECT_EQ(index.GetBlockPosition("Key"), 8U);
}

TEST(Index, NothingIsPutTogetherWhereThereIsNoBlock)
{
    Index index(12);
    Index::Key key("Key");
    EXPECT_EQ(index.PutTogether(key, 1), nullptr);
    EXPECT_TRUE(Support::KeySlots(index, "Key").empty());
}

TEST(Index, WhatWouldBePartedByAFullBlockIsNotPutTogether)
{
    DefaultBlockSizeSetting const setting("10");
    Index index(12);
    PutBytes(index, "Key", "abcd");
    Index::Key key("Key");
    EXPECT_EQ(index.PutTogether(key, 7), nullptr);
    EXPECT_EQ(Support::KeyContent(index, "Key"), "abcd");
    unsigned char* const place = index.PutTogether(key, 6);
    ASSERT_NE(place, nullptr);
    std::copy_n("efghij", 6, place);
    EXPECT_EQ(index.PutTogether(key, 1), nullptr);
    PutBytes(index, "Key", "k");
    ASSERT_EQ(Support::KeySlots(index, "Key").size(), 2U);
    EXPECT_EQ(Support::KeyContent(index, "Key"), "abcdefghijk");
}

TEST(Index, NothingIsPutTogetherIntoAFrozenBlock)
{
    Index index(12);
    PutBytes(index, "Key", "abc");
    index.AddTransformation("Key", BlockTransformationType::Freeze);
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    index.WriteAllBuffersToFileStream(stream.get());
    Index::Key key("Key");
    EXPECT_EQ(index.PutTogether(key, 1), nullptr);
}

TEST(Index, AFailedFirstSlotLeavesNoPoolThatSeemsToHaveRunDry)
{
    for (std::size_t allocation = 0; allocation < 30; ++allocation) {
        Index index(12);
        index.CreateBlock("first");
        Support::FailingAllocation const failing(allocation);
        try {
            index.AddBlock("second");
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(index.GetSlots().GetSlotCount() % 20, 1U);
            EXPECT_EQ(index.AddBlock("second"), 1U) << allocation;
        }
        EXPECT_EQ(index.GetSlots().GetSlotCount(), 21U);
    }
}

} // namespace
