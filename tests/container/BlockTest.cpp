#include "Zyl2/Wvf/Block.h"
#include "Bytes.h"
#include "FailingAllocation.h"
#include "TemporaryFile.h"
#include "support/Environment.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::Content;
using Support::DefaultBlockSizeSetting;
using Support::Hex;
using Zyl2::Exception::FileWriteException;
using Zyl2::Exception::MemoryAllocationException;
using Zyl2::Exception::OutOfBounds;

constexpr std::uint32_t NearlyFull = 4294967290U;

/// A block that believes in nearly 4 GiB of content: pages that nobody touches take no memory.
void PretendNearlyFull(Block& block)
{
    Zyl2Util::Buffer buffer;
    ASSERT_TRUE(buffer.Grow(4294967295U));
    block.Adopt(std::move(buffer), NearlyFull);
}

TEST(Block, FourBytesIntoAFreshBlockAllocateExactlyTenMebibytes)
{
    DefaultBlockSizeSetting const setting(nullptr);
    Block block;
    block.Append("abcd", 4);
    EXPECT_EQ(block.GetCapacity(), 10485760U);
    EXPECT_EQ(block.GetLength(), 4U);
    EXPECT_EQ(Content(block), "abcd");
}

TEST(Block, GrowsInStepsOfTheVariableOrOfTheCountWhicheverIsLarger)
{
    DefaultBlockSizeSetting const setting("4096");
    std::string const values(10000, 'x');
    Block block;
    block.Append(values.data(), 1);
    EXPECT_EQ(block.GetCapacity(), 4096U);
    block.Append(values.data(), 4094);
    EXPECT_EQ(block.GetCapacity(), 4096U);
    block.Append(values.data(), 1);
    EXPECT_EQ(block.GetCapacity(), 8192U) << "data that ends at the capacity makes it grow too";
    block.Append(values.data(), 10000);
    EXPECT_EQ(block.GetCapacity(), 18192U);
    EXPECT_EQ(Content(block), std::string(14096, 'x'));
}

TEST(Block, TheVariableIsReadWheneverABlockGrowsAndItsStepStaysInForce)
{
    DefaultBlockSizeSetting setting("100");
    Block block;
    block.Append("a", 1);
    EXPECT_EQ(block.GetCapacity(), 100U);
    setting.Set("50");
    std::string const values(99, 'x');
    block.Append(values.data(), values.size());
    EXPECT_EQ(block.GetCapacity(), 199U);
    setting.Set(nullptr);
    Block other;
    other.Append("a", 1);
    EXPECT_EQ(other.GetCapacity(), 50U);
}

TEST(Block, AVariableOf4294967295OrMoreLeavesTheStepAlone)
{
    for (char const* const text : {"4294967295", "4294967296", "-1"}) {
        DefaultBlockSizeSetting const setting(text);
        Block block;
        block.Append("a", 1);
        EXPECT_EQ(block.GetCapacity(), 10485760U) << text;
    }
}

TEST(Block, AStepOfZeroGrowsByWhatIsWritten)
{
    for (char const* const text : {"0", "", "many"}) {
        DefaultBlockSizeSetting const setting(text);
        Block block;
        block.Append("abc", 3);
        EXPECT_EQ(block.GetCapacity(), 3U) << text;
        block.Append("d", 1);
        EXPECT_EQ(block.GetCapacity(), 4U) << text;
        EXPECT_EQ(Content(block), "abcd") << text;
    }
}

TEST(Block, WritingNothingWithAStepOfZeroNeedsNoBuffer)
{
    DefaultBlockSizeSetting const setting("0");
    Block block;
    block.Append(nullptr, 0);
    EXPECT_EQ(block.GetCapacity(), 0U);
    EXPECT_EQ(block.GetLength(), 0U);
}

TEST(Block, FillAtCopiesToTheOffsetAndAdvancesIt)
{
    Block block;
    block.Append("abcdef", 6);
    void const* const source = "XY";
    unsigned int at = 2;
    block.FillAt(source, 2, at);
    EXPECT_EQ(at, 4U);
    EXPECT_EQ(Content(block), "abXYef");
    EXPECT_EQ(block.GetPosition(), 6U);
}

TEST(Block, FillAtDoesNotRaiseTheLengthItself)
{
    Block block;
    void const* const source = "abcd";
    unsigned int at = 0;
    block.FillAt(source, 4, at);
    EXPECT_EQ(at, 4U);
    EXPECT_EQ(block.GetLength(), 0U);
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(block.GetData()), 4), "abcd");
}

TEST(Block, FillAtOfNothingNeedsNoSource)
{
    Block block;
    block.Append("abcdef", 6);
    void const* const source = nullptr;
    unsigned int at = 2;
    block.FillAt(source, 0, at);
    EXPECT_EQ(at, 2U);
    EXPECT_EQ(Content(block), "abcdef");
}

TEST(Block, FillAtFarBehindTheBufferGrowsFarEnough)
{
    DefaultBlockSizeSetting const setting("8");
    Block block;
    void const* const source = "abcd";
    unsigned int at = 1000;
    block.FillAt(source, 4, at);
    EXPECT_EQ(at, 1004U);
    EXPECT_GE(block.GetCapacity(), 1004U);
}

TEST(Block, SetPositionPastTheLengthIsRefused)
{
    Block block;
    block.Append("abcd", 4);
    block.SetPosition(2);
    Support::expectThrown<OutOfBounds>(
        [&block] { block.SetPosition(5); },
        {11, "Invalid block position", "Zyl2Wvf::Block::SetPosition", "Zyl2/Wvf/Block"});
    EXPECT_EQ(block.GetPosition(), 2U);
}

TEST(Block, OverwritingInTheMiddleDoesNotLowerTheLength)
{
    Block block;
    block.Append("abcdef", 6);
    block.SetPosition(1);
    block.Append("XY", 2);
    EXPECT_EQ(block.GetLength(), 6U);
    EXPECT_EQ(block.GetPosition(), 3U);
    EXPECT_EQ(Content(block), "aXYdef");
}

TEST(Block, AFailedGrowthLeavesTheBlockAsItWas)
{
    DefaultBlockSizeSetting const setting("4");
    Block block;
    block.Append("abc", 3);
    unsigned char const* const data = block.GetData();
    Support::expectThrown<MemoryAllocationException>(
        [&block] {
            Support::FailingAllocation const failing(0);
            block.Append("defg", 4);
        },
        {16, "Memory allocation error", "Zyl2Wvf::Block::AllocateAdditionalMemory",
         "Zyl2/Wvf/Block"});
    EXPECT_EQ(block.GetData(), data);
    EXPECT_EQ(block.GetCapacity(), 4U);
    EXPECT_EQ(block.GetPosition(), 3U);
    EXPECT_EQ(Content(block), "abc");
    block.Append("defg", 4);
    EXPECT_EQ(Content(block), "abcdefg");
}

TEST(Block, AnAllocationThatNoAddressSpaceHoldsIsRefused)
{
    DefaultBlockSizeSetting const setting("16");
    Block block;
    block.Append("abc", 3);
    Support::expectThrown<MemoryAllocationException>(
        [&block] { block.AllocateAdditionalMemory(std::numeric_limits<std::size_t>::max()); },
        {16, "Memory allocation error", "Zyl2Wvf::Block::AllocateAdditionalMemory",
         "Zyl2/Wvf/Block"});
    EXPECT_EQ(block.GetCapacity(), 16U);
    EXPECT_EQ(Content(block), "abc");
}

TEST(Block, AdditionalMemoryIsAddedExactly)
{
    Block block;
    block.AllocateAdditionalMemory(100);
    block.AllocateAdditionalMemory(11);
    EXPECT_EQ(block.GetCapacity(), 111U);
    EXPECT_EQ(block.GetLength(), 0U);
    block.AllocateAdditionalMemory(0);
    EXPECT_EQ(block.GetCapacity(), 111U);
}

TEST(Block, PassingFourGibibytesIsRefusedInsteadOfWrappingAround)
{
    DefaultBlockSizeSetting const setting("16");
    Block block;
    PretendNearlyFull(block);
    Support::expectThrown<MemoryAllocationException>(
        [&block] { block.Append("abcdef", 6); },
        {16, "Memory allocation error", "Zyl2Wvf::Block", "Zyl2/Wvf/Block"});
    unsigned int at = NearlyFull;
    void const* const source = "abcdef";
    Support::expectThrown<MemoryAllocationException>(
        [&] { block.FillAt(source, 6, at); },
        {16, "Memory allocation error", "Zyl2Wvf::Block", "Zyl2/Wvf/Block"});
    Support::expectThrown<MemoryAllocationException>(
        [&] { block.Extend(std::numeric_limits<std::size_t>::max()); },
        {16, "Memory allocation error", "Zyl2Wvf::Block", "Zyl2/Wvf/Block"});
    EXPECT_EQ(at, NearlyFull);
    EXPECT_EQ(block.GetLength(), NearlyFull);
    EXPECT_EQ(block.GetPosition(), NearlyFull);
    EXPECT_EQ(block.GetCapacity(), 4294967295U);
}

TEST(Block, IsWrittenBehindItsLengthWhenAskedFor)
{
    Support::TemporaryFolder const folder;
    Block block;
    block.Append("abc", 3);
    block.SetPosition(1);
    block.Write(Support::OpenStream(folder.File("a"), "wb").get(), true);
    Block().Write(Support::OpenStream(folder.File("b"), "wb").get(), true);
    EXPECT_EQ(Support::ReadFile(folder.File("a")), Hex("03 00 00 00 61 62 63"));
    EXPECT_EQ(Support::ReadFile(folder.File("b")), Hex("00 00 00 00"));
}

TEST(Block, AWriteThatFailsIsReported)
{
    Support::Stream const full = Support::OpenStream("/dev/full", "wb");
    std::setvbuf(full.get(), nullptr, _IONBF, 0);
    Block block;
    block.Append("abc", 3);
    Support::expectThrown<FileWriteException>(
        [&] { block.Write(full.get(), false); },
        {7, "Unable to write to file", "Zyl2Wvf::Block::Write", "Zyl2/Wvf/Block"});
    EXPECT_EQ(Content(block), "abc");
}

TEST(Block, AStreamThatIsAtItsEndCountsAsAFailedWrite)
{
    Support::TemporaryFolder const folder;
    Support::Stream const stream = Support::OpenStream(folder.File("a"), "w+b");
    std::fgetc(stream.get());
    Support::expectThrown<FileWriteException>(
        [&] { Block().Write(stream.get(), false); },
        {7, "Unable to write to file", "Zyl2Wvf::Block::Write", "Zyl2/Wvf/Block"});
}

TEST(Block, MovingHandsTheBufferOverAndLeavesAnEmptyBlock)
{
    Block source;
    source.Append("abc", 3);
    unsigned char const* const data = source.GetData();
    Block target(std::move(source));
    EXPECT_EQ(target.GetData(), data);
    EXPECT_EQ(Content(target), "abc");
    EXPECT_EQ(source.GetData(), nullptr); // NOLINT: a block that was moved from is an empty one
    EXPECT_EQ(source.GetLength(), 0U);
    EXPECT_EQ(source.GetCapacity(), 0U);
    EXPECT_EQ(source.GetPosition(), 0U);

    Block assigned;
    assigned.Append("other", 5);
    assigned = std::move(target);
    EXPECT_EQ(Content(assigned), "abc");
    EXPECT_EQ(assigned.GetPosition(), 3U);
    EXPECT_TRUE(std::is_nothrow_move_constructible<Block>::value);
    EXPECT_TRUE(std::is_nothrow_move_assignable<Block>::value);
    EXPECT_FALSE(std::is_copy_constructible<Block>::value);
}

TEST(Block, ResetReleasesEverything)
{
    Block block;
    block.Append("abc", 3);
    block.Reset();
    EXPECT_EQ(block.GetData(), nullptr);
    EXPECT_EQ(block.GetCapacity(), 0U);
    EXPECT_EQ(block.GetLength(), 0U);
    EXPECT_EQ(block.GetPosition(), 0U);
    block.Append("d", 1);
    EXPECT_EQ(Content(block), "d");
}

} // namespace
