#include "Zyl2/Wvf/VersionedRecord.h"
#include "Bytes.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>

namespace Records {

struct Sample
{
    std::uint32_t number;
    std::string text;
};

std::string RecordVersion(Sample const& /*sample*/)
{
    return "0.2";
}

void CopyFieldsToBlock(Zyl2Wvf::Block& block, Sample const& sample)
{
    Zyl2Wvf::CopyToBlock(block, sample.number);
    Zyl2Wvf::CopyToBlock(block, sample.text);
}

/// Loses the block's content, so that the place of the size is gone.
struct LosingSample
{};

std::string RecordVersion(LosingSample const& /*sample*/)
{
    return "0.1";
}

void CopyFieldsToBlock(Zyl2Wvf::Block& block, LosingSample const& /*sample*/)
{
    block.Reset();
}

} // namespace Records

namespace {

using namespace Zyl2Wvf;
using Support::Content;
using Support::Hex;

TEST(VersionedRecord, IsItsSizeItsVersionAndItsFields)
{
    Block block;
    CopyToBlock_Versioned(block, Records::Sample{0x04030201, "ab"});
    EXPECT_EQ(Content(block), Hex("15 00 00 00 03 00 00 00 30 2E 32 "
                                  "01 02 03 04 02 00 00 00 61 62"));
}

TEST(VersionedRecord, TheSizeCountsItselfAndOnlyItsOwnRecord)
{
    Block block;
    CopyToBlock(block, std::string("xy"));
    CopyToBlock_Versioned(block, Records::Sample{1, ""});
    CopyToBlock_Versioned(block, Records::Sample{2, "abc"});
    EXPECT_EQ(Content(block),
              Hex("02 00 00 00 78 79 "
                  "13 00 00 00 03 00 00 00 30 2E 32 01 00 00 00 00 00 00 00 "
                  "16 00 00 00 03 00 00 00 30 2E 32 02 00 00 00 03 00 00 00 61 62 63"));
    EXPECT_EQ(block.GetPosition(), block.GetLength());
}

TEST(VersionedRecord, WrittenOverEarlierBytesLeavesTheCursorBehindItself)
{
    Block block;
    for (int word = 0; word < 10; ++word)
        CopyToBlock(block, 0xEEEEEEEEU);
    block.SetPosition(4);
    CopyToBlock_Versioned(block, Records::Sample{1, ""});
    EXPECT_EQ(block.GetPosition(), 23U);
    EXPECT_EQ(block.GetLength(), 40U);
    EXPECT_EQ(Content(block).substr(4, 20),
              Hex("13 00 00 00 03 00 00 00 30 2E 32 01 00 00 00 00 00 00 00 EE"));
}

TEST(VersionedRecord, ASizeThatCannotBePatchedIsReported)
{
    Block block;
    CopyToBlock(block, 1U);
    Support::expectThrown<Zyl2::Exception::OutOfBounds>(
        [&block] { CopyToBlock_Versioned(block, Records::LosingSample()); },
        {11, "Invalid block position", "Zyl2Wvf::Block::SetPosition", "Zyl2/Wvf/Block"});
}

} // namespace
