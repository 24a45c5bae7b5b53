#include "Bytes.h"
#include "IndexContent.h"
#include "LogCapture.h"
#include "TemporaryFile.h"
#include "Zyl2/Wvf/WvFile.h"
#include "support/Environment.h"
#include "support/ThrowSite.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::DefaultBlockSizeSetting;
using Support::LogCapture;
using Support::PutBytes;

std::vector<std::string> operator+(std::vector<std::string> left,
                                   std::vector<std::string> const& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// What is said of the slots that nothing was put into.
std::vector<std::string> SpareSlots(int first, int last, int position)
{
    std::vector<std::string> texts;
    for (int slot = first; slot <= last; ++slot)
        texts = texts +
                std::vector<std::string>{"Writing buffer " + std::to_string(slot) + " to stream.",
                                         "Writing buffer at position: " + std::to_string(position),
                                         "Buffer " + std::to_string(slot) + " written to stream."};
    return texts;
}

TEST(IndexLog, TheWholeStoryOfAFileIsToldInOrder)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    LogCapture log;
    {
        WvFile file;
        file.OpenFileForWriting(folder.File("a.mox"), false);
        file.WriteHeader();
        Index& index = file.GetIndex();
        PutBytes(index, "Heavy Data", std::string(16, 'x'));
        file.AddBlockTransformation("Heavy Data", BlockTransformationType::Freeze);
        index.FlushFrozen(file.GetStream());
        PutBytes(index, "Tree", "aaaaaaaa");
        file.AddBlockTransformation("Tree", BlockTransformationType::Compress);
        index.WriteAllBuffersToFileStream(file.GetStream());
        file.CloseFile();
    }
    std::size_t const size = Support::Hex("08 00 00 00 78 9C 4B 4C 84 00 00 0D AC 03 09").size();
    std::vector<std::string> const expected =
        std::vector<std::string>{"Flushing frozen blocks ... ",
                                 "Writing buffer 0 to stream.",
                                 "Buffer length: 16",
                                 "Writing buffer at position: 2800",
                                 "Buffer 0 written to stream.",
                                 "Frozen blocks flushed. ",
                                 "Writing all buffers to file stream ...",
                                 "Writing buffer 1 to stream.",
                                 "Buffer length: 8",
                                 "Buffer length after transformations: " + std::to_string(size),
                                 "Writing buffer at position: 2816",
                                 "Buffer 1 written to stream."} +
        SpareSlots(2, 19, static_cast<int>(2816 + size)) +
        std::vector<std::string>{"All buffers to file stream written.", "Closing file ...",
                                 "File closed.",
                                 "Closing file ..."}; // the destructor finds the file closed
    EXPECT_EQ(log.Texts(), expected);
}

/// What is told of a key with three blocks, the first of which are compressed when they are full or
/// when they are saved.
std::vector<std::string> StoryOfThreeBlocks(std::string const& path, bool compressesFullBlocks)
{
    Support::Stream const stream = Support::OpenStream(path, "wb");
    Index index(12);
    if (compressesFullBlocks)
        index.CompressFullBlocks("Key");
    LogCapture log;
    for (char const letter : {'a', 'b', 'c'})
        PutBytes(index, "Key", std::string(16, letter));
    index.AddTransformation("Key", BlockTransformationType::Compress);
    index.WriteAllBuffersToFileStream(stream.get());
    return log.Texts();
}

TEST(IndexLog, SavingTellsTheSameOfABlockThatWasCompressedBefore)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    std::vector<std::string> const late = StoryOfThreeBlocks(folder.File("late"), false);
    EXPECT_EQ(late[2], "Buffer length: 16");
    EXPECT_EQ(StoryOfThreeBlocks(folder.File("early"), true), late);
}

TEST(IndexLog, IndexBlocksAreToldOfWhenTheirTurnComesAndAgainAtTheEnd)
{
    DefaultBlockSizeSetting const setting("0");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    std::vector<std::string> expected{"Writing all buffers to file stream ..."};
    for (int put = 0; put < 20; ++put)
        index.Put("Key", true);
    auto const oneByte = [](int slot, int position) {
        return std::vector<std::string>{"Writing buffer " + std::to_string(slot) + " to stream.",
                                        "Buffer length: 1",
                                        "Writing buffer at position: " + std::to_string(position),
                                        "Buffer " + std::to_string(slot) + " written to stream."};
    };
    for (int slot = 0; slot < 19; ++slot)
        expected = expected + oneByte(slot, 2800 + slot);
    expected = expected +
               std::vector<std::string>{"Writing buffer 19 to stream.", "Buffer length: 27804",
                                        "Writing buffer at position: 2819",
                                        "Buffer 19 written to stream."} +
               oneByte(20, 30623) + SpareSlots(21, 219, 30624) +
               std::vector<std::string>{"Writing index buffer 19 to stream.",
                                        "Index buffer 19 written to stream.",
                                        "All buffers to file stream written."};
    LogCapture log;
    index.WriteAllBuffersToFileStream(stream.get());
    EXPECT_EQ(log.Texts(), expected);
}

TEST(IndexLog, AnIndexBlockAmongFrozenBlocksIsToldOfOnlyAtTheEnd)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    for (int put = 0; put < 21; ++put) {
        index.AddTransformation("Key", BlockTransformationType::Freeze);
        PutBytes(index, "Key", std::string(16, 'x'));
        index.FlushFrozen(stream.get());
    }
    LogCapture log;
    index.WriteAllBuffersToFileStream(stream.get());
    EXPECT_EQ(log.Texts(),
              (std::vector<std::string>{"Writing all buffers to file stream ...",
                                        "Writing buffer 21 to stream.", "Buffer length: 16",
                                        "Writing buffer at position: 30924",
                                        "Buffer 21 written to stream."} +
               SpareSlots(22, 219, 30940) +
               std::vector<std::string>{"Writing index buffer 19 to stream.",
                                        "Index buffer 19 written to stream.",
                                        "All buffers to file stream written."}));
}

TEST(IndexLog, AFailedPositioningIsToldOf)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[0]);
    Support::Stream const stream(fdopen(ends[1], "wb"));
    Index index(12);
    index.Put("Key", 1U);
    LogCapture log;
    Support::expectThrown<Zyl2::Exception::FileWriteException>(
        [&] { index.WriteBufferToFileStream(0, stream.get()); },
        {7, "Saving the buffer failed", "Zyl2Wvf::Index::WriteBufferToFileStream",
         "Zyl2/Wvf/Index"});
    EXPECT_EQ(index.GetSlots().GetBlock(0).GetData(), nullptr) << "it was given up";
    EXPECT_EQ(log.Texts(), (std::vector<std::string>{
                               "Writing buffer 0 to stream.", "Buffer length: 4",
                               "Writing buffer at position: 2800", "File positioning failed"}));
}

TEST(IndexLog, SavingAFrozenSlotAgainIsToldOfBeforeItIsRefused)
{
    Index index(12);
    index.Put("Key", 1U);
    index.GetSlots().GetItem(0).state = Zyl2Wvf::IndexItem::State::Frozen;
    LogCapture log;
    Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
        [&] { index.WriteBufferToFileStream(0, nullptr); },
        {17, "Invalid object state", "Zyl2Wvf::Index::WriteBufferToFileStream", "Zyl2/Wvf/Index"});
    EXPECT_EQ(log.Texts(), std::vector<std::string>{"Writing buffer 0 to stream."});
}

TEST(IndexLog, AnEmptyBlockThatIsCompressedHasOnlyALengthAfterwards)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    index.AddBlock("Key");
    index.AddTransformation("Key", BlockTransformationType::Compress);
    std::size_t const size = Support::Hex("00 00 00 00 78 9C 03 00 00 00 00 01").size();
    LogCapture log;
    index.WriteBufferToFileStream(0, stream.get());
    EXPECT_EQ(log.Texts(), (std::vector<std::string>{
                               "Writing buffer 0 to stream.",
                               "Buffer length after transformations: " + std::to_string(size),
                               "Writing buffer at position: 2800", "Buffer 0 written to stream."}));
}

TEST(IndexLog, AFailedSaveEndsWithoutTheLastRecord)
{
    Support::Stream const full = Support::OpenStream("/dev/full", "wb");
    Index index(12);
    index.Put("Key", 1U);
    LogCapture log;
    EXPECT_THROW(index.WriteAllBuffersToFileStream(full.get()),
                 Zyl2::Exception::FileWriteException);
    ASSERT_FALSE(log.entries.empty());
    EXPECT_NE(log.entries.back().text, "All buffers to file stream written.");
}

TEST(IndexLog, FlushingWithoutAStreamSaysNothing)
{
    Index index(12);
    index.Put("Key", 1U);
    LogCapture const log;
    index.FlushFrozen(nullptr);
    EXPECT_TRUE(log.entries.empty());
}

TEST(IndexLog, EveryRecordKnowsItsSourceItsFunctionAndCarriesSeverityOne)
{
    DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "wb");
    Index index(12);
    for (int put = 0; put < 20; ++put)
        PutBytes(index, "Key", std::string(16, 'x'));
    LogCapture log;
    std::time_t const before = std::time(nullptr);
    index.FlushFrozen(stream.get());
    index.WriteAllBuffersToFileStream(stream.get());
    std::time_t const after = std::time(nullptr);
    ASSERT_GT(log.entries.size(), 100U);
    for (LogCapture::Entry const& entry : log.entries) {
        EXPECT_EQ(entry.file, "Zyl2/Wvf/Index") << entry.text;
        EXPECT_EQ(entry.severity, 1) << entry.text;
        EXPECT_NE(entry.function.find("Zyl2Wvf::Index::"), std::string::npos) << entry.function;
        EXPECT_GT(entry.line, 0UL) << entry.text;
        EXPECT_LE(before, entry.time);
        EXPECT_LE(entry.time, after);
    }
    EXPECT_EQ(log.recordCalls, 0);
    auto const functionOf = [&log](std::string const& text) {
        for (LogCapture::Entry const& entry : log.entries)
            if (entry.text == text)
                return entry.function;
        return std::string("no such record");
    };
    EXPECT_NE(functionOf("Flushing frozen blocks ... ").find("FlushFrozen("), std::string::npos);
    EXPECT_NE(functionOf("Writing buffer 3 to stream.").find("WriteBufferToFileStream("),
              std::string::npos);
    EXPECT_NE(functionOf("Writing buffer at position: 2800").find("WriteBufferToFileStream("),
              std::string::npos);
    EXPECT_NE(
        functionOf("Index buffer 19 written to stream.").find("WriteIndexBufferToFileStream("),
        std::string::npos);
    EXPECT_NE(
        functionOf("All buffers to file stream written.").find("WriteAllBuffersToFileStream("),
        std::string::npos);
}

} // namespace
