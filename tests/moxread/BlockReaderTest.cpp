#include "moxread/BlockReader.h"

#include "moxread/FormatError.h"

#include "Bytes.h"
#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::BlockReader;

namespace {

MoxRead::Slot slotOf(std::uint64_t position, std::size_t size, std::uint8_t transformations)
{
    MoxRead::Slot slot;
    slot.name = "Heavy Data";
    slot.position = position;
    slot.size = static_cast<std::uint32_t>(size);
    slot.transformations = transformations;
    return slot;
}

std::string textOf(std::vector<std::uint8_t> const& bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::string longContent()
{
    std::string content;
    for (std::size_t i = 0; content.size() < 3000000; ++i)
        content += std::to_string(i * i);
    return content;
}

} // namespace

TEST(BlockReader, APlainBlockIsReadAsItStands)
{
    const TemporaryFile temporary("..abcdef..");
    const MoxRead::InputFile file(temporary.path());
    BlockReader reader(file, slotOf(2, 6, 0));
    EXPECT_EQ(reader.length(), 6U);
    EXPECT_EQ(textOf(reader.readAll()), "abcdef");
}

TEST(BlockReader, ACompressedBlockIsInflated)
{
    const std::string block = Bytes()
                                  .u32(3)
                                  .raw("\x78\x9C\x4B\x4C\x4A\x06")
                                  .raw(std::string("\x00\x02\x4D\x01\x27", 5))
                                  .str();
    const TemporaryFile temporary(".." + block + "..");
    const MoxRead::InputFile file(temporary.path());
    BlockReader reader(file, slotOf(2, block.size(), 1));
    EXPECT_EQ(reader.length(), 3U);
    EXPECT_EQ(textOf(reader.readAll()), "abc");
}

TEST(BlockReader, ABlockIsReadInPiecesOfAnySize)
{
    const std::string content = longContent();
    const std::string block = deflated(content);
    const TemporaryFile temporary(block);
    const MoxRead::InputFile file(temporary.path());
    for (const std::size_t piece : {std::size_t{1000}, std::size_t{65536}, std::size_t{2999999}}) {
        BlockReader reader(file, slotOf(0, block.size(), 33));
        std::string read;
        std::vector<std::uint8_t> buffer(piece);
        while (const std::size_t count = reader.read(buffer.data(), piece))
            read.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
        EXPECT_TRUE(read == content);
    }
}

TEST(BlockReader, ALongBlockIsReadAtOnce)
{
    const std::string content = longContent();
    const std::string block = deflated(content);
    const TemporaryFile temporary(block);
    const MoxRead::InputFile file(temporary.path());
    EXPECT_TRUE(textOf(BlockReader(file, slotOf(0, block.size(), 1)).readAll()) == content);
}

TEST(BlockReader, TheMostThatDeflateCanExpandIsAccepted)
{
    std::string content;
    content.resize(20000000);
    const std::string block = deflated(content);
    ASSERT_LT(block.size() * 1000, content.size());
    const TemporaryFile temporary(block);
    const MoxRead::InputFile file(temporary.path());
    EXPECT_EQ(BlockReader(file, slotOf(0, block.size(), 1)).readAll().size(), content.size());
}

TEST(BlockReader, AStreamWithAPresetDictionaryIsDamaged)
{
    const std::string block = Bytes().u32(3).raw("\x78\xBB").raw(std::string(12, 'd')).str();
    const TemporaryFile temporary(block);
    const MoxRead::InputFile file(temporary.path());
    try {
        BlockReader(file, slotOf(0, block.size(), 1)).readAll();
        FAIL();
    } catch (MoxRead::FormatError const& error) {
        EXPECT_STREQ(error.what(), "slot 0 \"Heavy Data\" at byte 0: the zlib stream is damaged");
    }
}
