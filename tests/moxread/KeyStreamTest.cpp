#include "moxread/KeyStream.h"

#include "moxread/FormatError.h"

#include "Bytes.h"
#include "TestFile.h"

#include <gtest/gtest.h>

using namespace MoxReadTest;
using MoxRead::Container;
using MoxRead::KeyStream;

namespace {

// Each byte in a block of its own, every third one compressed, empty blocks between them.
std::string scattered(std::string const& content)
{
    std::vector<TestBlock> blocks;
    for (std::size_t i = 0; i < content.size(); ++i) {
        std::string const byte(1, content[i]);
        blocks.push_back(i % 3 == 0 ? TestBlock{"Light Data", 1, deflated(byte)}
                                    : TestBlock{"Light Data", 0, byte});
        blocks.push_back({"Light Data", 1, deflated("")});
    }
    return assemble(slotsFor(blocks));
}

} // namespace

TEST(KeyStream, ValuesAreDecodedAcrossBlocks)
{
    Bytes const bytes = Bytes()
                            .raw("\x01\x02\x03\x84")
                            .raw("\x01\x02\x03\x04\x05\x06\x07\x88")
                            .raw(std::string("\x00\x00\xC0\x3F", 4))
                            .raw(std::string("\x00\x00\x00\x00\x00\x00\x04\xC0", 8))
                            .raw("\x01\xFE")
                            .raw(std::string("\x03\x00\x00\x00xyz", 7));
    TemporaryFile const temporary(scattered(bytes.str()));
    Container const container(temporary.path());
    KeyStream stream(container, "Light Data");
    EXPECT_EQ(stream.remaining(), 33U);
    EXPECT_EQ(stream.readUint32(), 0x84030201U);
    EXPECT_EQ(stream.readUint64(), 0x8807060504030201U);
    EXPECT_EQ(stream.readFloat(), 1.5F);
    EXPECT_EQ(stream.readDouble(), -2.5);
    EXPECT_TRUE(stream.readFlag());
    EXPECT_EQ(stream.readByte(), 0xFEU);
    EXPECT_EQ(stream.position(), 26U);
    EXPECT_EQ(stream.readString(), "xyz");
    EXPECT_EQ(stream.remaining(), 0U);
    EXPECT_NO_THROW(stream.expectEnd());
}

TEST(KeyStream, AKeyWithoutBlocksIsEmpty)
{
    TemporaryFile const temporary(assemble(slotsFor({})));
    Container const container(temporary.path());
    KeyStream stream(container, "Light Data");
    EXPECT_EQ(stream.remaining(), 0U);
    EXPECT_NO_THROW(stream.expectEnd());
    EXPECT_THROW(stream.readByte(), MoxRead::FormatError);
}

TEST(KeyStream, ALongStringIsReadWhole)
{
    std::string const text(200000, 'x');
    TemporaryFile const temporary(
        assemble(slotsFor({{"Light Data", 1, deflated(Bytes().text(text).str())}})));
    Container const container(temporary.path());
    KeyStream stream(container, "Light Data");
    EXPECT_TRUE(stream.readString() == text);
}

TEST(KeyStream, ADamagedEmptyBlockAtTheEndIsFound)
{
    std::string damaged = deflated("");
    damaged.back() = 'x';
    TemporaryFile const temporary(
        assemble(slotsFor({{"Light Data", 0, "a"}, {"Light Data", 1, damaged}})));
    Container const container(temporary.path());
    KeyStream stream(container, "Light Data");
    EXPECT_EQ(stream.readByte(), 'a');
    EXPECT_THROW(stream.expectEnd(), MoxRead::FormatError);
}
