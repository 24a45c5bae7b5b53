#include "Zyl2/Wvf/CopyToBlock.h"
#include "Bytes.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::Content;
using Support::Hex;

template <typename T>
std::string Encoded(T const& value)
{
    Block block;
    CopyToBlock(block, value);
    EXPECT_EQ(block.GetPosition(), block.GetLength());
    EXPECT_EQ(EncodedSize(value), block.GetLength());
    return Content(block);
}

std::string EncodedItems(std::vector<IndexItem> const& items)
{
    Block block;
    CopyToBlock(block, items);
    return Content(block);
}

TEST(CopyToBlock, ScalarsAreTheirOwnBytes)
{
    EXPECT_EQ(Encoded(0x04030201U), Hex("01 02 03 04"));
    EXPECT_EQ(Encoded(-2), Hex("FE FF FF FF"));
    EXPECT_EQ(Encoded(0x0807060504030201UL), Hex("01 02 03 04 05 06 07 08"));
    EXPECT_EQ(Encoded(static_cast<unsigned char>(200)), Hex("C8"));
    EXPECT_EQ(Encoded(1.0F), Hex("00 00 80 3F"));
    EXPECT_EQ(Encoded(-2.0), Hex("00 00 00 00 00 00 00 C0"));
    EXPECT_EQ(Encoded(true), Hex("01"));
    EXPECT_EQ(Encoded(false), Hex("00"));
}

TEST(CopyToBlock, AStringIsItsLengthAndItsCharactersWithoutTerminator)
{
    EXPECT_EQ(Encoded(std::string("Mox Tree")), Hex("08 00 00 00 4D 6F 78 20 54 72 65 65"));
    EXPECT_EQ(Encoded(std::string("a\0b", 3)), Hex("03 00 00 00 61 00 62"));
}

TEST(CopyToBlock, AVectorIsItsCountAndItsElements)
{
    EXPECT_EQ(Encoded(std::vector<unsigned int>{1, 258}),
              Hex("02 00 00 00 01 00 00 00 02 01 00 00"));
    EXPECT_EQ(Encoded(std::vector<unsigned int>()), Hex("00 00 00 00"));
    EXPECT_EQ(Encoded(std::vector<unsigned char>{2, 0, 3}), Hex("03 00 00 00 02 00 03"));
    EXPECT_EQ(Encoded(std::vector<float>{1.0F}), Hex("01 00 00 00 00 00 80 3F"));
    EXPECT_EQ(Encoded(std::vector<double>{1.0}), Hex("01 00 00 00 00 00 00 00 00 00 F0 3F"));
    EXPECT_EQ(Encoded(std::vector<double>()), Hex("00 00 00 00"));
}

TEST(CopyToBlock, AVectorOfStringsIsItsCountAndItsStrings)
{
    EXPECT_EQ(Encoded(std::vector<std::string>{"ab", "", "c"}),
              Hex("03 00 00 00 02 00 00 00 61 62 00 00 00 00 01 00 00 00 63"));
    EXPECT_EQ(Encoded(std::vector<std::string>()), Hex("00 00 00 00"));
}

TEST(CopyToBlock, AnIndexEntryIs139Bytes)
{
    IndexItem item;
    item.id = 0xA1;
    item.name = "Heavy Data";
    item.size = 0x04030201;
    item.transformations = 33;
    item.position = 0x1122334455667788;
    item.state = Zyl2Wvf::IndexItem::State::Frozen;
    item.contentLength = 7;
    std::string const expected = Hex("01 00 00 00 A1 80 00 00 00 48 65 61 76 79 20 44 61 74 61") +
                                 Support::Zeros(118) + Hex("01 02 03 04 21 00");
    ASSERT_EQ(expected.size(), 143U);
    EXPECT_EQ(EncodedItems({item}), expected);
}

TEST(CopyToBlock, IndexEntriesFollowTheirCountWithoutPadding)
{
    IndexItem first;
    first.id = 1;
    first.name = "a";
    IndexItem second;
    second.id = 2;
    second.reserved = 9;
    std::string expected = Hex("02 00 00 00 01 80 00 00 00 61") + Support::Zeros(133) +
                           Hex("02 80 00 00 00") + Support::Zeros(133) + Hex("09");
    EXPECT_EQ(EncodedItems({first, second}), expected);
    EXPECT_EQ(EncodedItems({}), Hex("00 00 00 00"));
}

TEST(CopyToBlock, ANameOf128BytesOrMoreIsCutTo128BytesWithoutTerminator)
{
    for (std::size_t const length : {std::size_t(128), std::size_t(129), std::size_t(200)}) {
        IndexItem item;
        item.id = 1;
        item.name = std::string(length, 'n');
        item.size = 0xFFFFFFFF;
        EXPECT_EQ(EncodedItems({item}), Hex("01 00 00 00 01 80 00 00 00") + std::string(128, 'n') +
                                            Hex("FF FF FF FF 00 00"))
            << length;
    }
}

TEST(CopyToBlock, ANameOf127BytesKeepsOneZeroByte)
{
    IndexItem item;
    item.name = std::string(127, 'n');
    EXPECT_EQ(EncodedItems({item}),
              Hex("01 00 00 00 00 80 00 00 00") + std::string(127, 'n') + Support::Zeros(7));
}

TEST(CopyToBlock, ANameEndsAtItsFirstZeroByte)
{
    IndexItem item;
    item.name = std::string("ab\0cd", 5);
    EXPECT_EQ(EncodedItems({item}), Hex("01 00 00 00 00 80 00 00 00 61 62") + Support::Zeros(132));
}

TEST(CopyToBlock, WritesAtTheCursorAndOverwritesWhatIsThere)
{
    Block block;
    CopyToBlock(block, 0x11111111U);
    CopyToBlock(block, 0x22222222U);
    block.SetPosition(2);
    CopyToBlock(block, 0x33333333U);
    EXPECT_EQ(Content(block), Hex("11 11 33 33 33 33 22 22"));
}

TEST(CopyToBlock, ACountThat32BitsCannotHoldIsRefused)
{
    EXPECT_EQ(EncodedCount(4294967295U), 4294967295U);
    Support::expectThrown<Zyl2::Exception::MemoryAllocationException>(
        [] { EncodedCount(4294967296U); },
        {16, "Memory allocation error", "EncodedCount", "Zyl2/Wvf/CopyToBlock"});
}

} // namespace
