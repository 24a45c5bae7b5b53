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

std::string longContent()
{
    std::string content;
    for (std::size_t i = 0; content.size() < 3000000; ++i)
        content += std::to_string(i * i);
    return content;
}

} // namespace

TEST(BlockReader, ABlockIsReadInPiecesOfAnySize)
{
    std::string const content = longContent();
    std::string const block = deflated(content);
    TemporaryFile const temporary(block);
    MoxRead::InputFile const file(temporary.path());
    for (std::size_t const piece : {std::size_t{1000}, std::size_t{65536}, std::size_t{2999999}}) {
        BlockReader reader(file, slotOf(0, block.size(), 33));
        std::string read;
        std::vector<std::uint8_t> buffer(piece);
        while (std::size_t const count = reader.read(buffer.data(), piece))
            read.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
        EXPECT_TRUE(read == content);
    }
}

TEST(BlockReader, TheMostThatDeflateCanExpandIsAccepted)
{
    std::string content;
    content.resize(20000000);
    std::string const block = deflated(content);
    ASSERT_LT(block.size() * 1000, content.size());
    TemporaryFile const temporary(block);
    MoxRead::InputFile const file(temporary.path());
    EXPECT_EQ(BlockReader(file, slotOf(0, block.size(), 1)).readAll().size(), content.size());
}

TEST(BlockReader, AStreamWithAPresetDictionaryIsDamaged)
{
    std::string const block = Bytes().u32(3).raw("\x78\xBB").raw(std::string(12, 'd')).str();
    TemporaryFile const temporary(block);
    MoxRead::InputFile const file(temporary.path());
    try {
        BlockReader(file, slotOf(0, block.size(), 1)).readAll();
        FAIL();
    } catch (MoxRead::FormatError const& error) {
        EXPECT_STREQ(error.what(), "slot 0 \"Heavy Data\" at byte 0: the zlib stream is damaged");
    }
}
