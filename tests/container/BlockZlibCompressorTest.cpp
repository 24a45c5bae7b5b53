#include "Zyl2/Wvf/BlockZlibCompressor.h"
#include "Bytes.h"
#include "FailingAllocation.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockEncoder.h"
#include "support/Environment.h"
#include "support/ThrowSite.h"

#include <zlib.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zyl2Wvf;
using Support::Content;
using Support::DefaultBlockSizeSetting;
using Support::Hex;

std::string Compressed(std::string const& content, int level = 6,
                       BlockEncoder const& encoder = ZlibEncoder)
{
    Block block;
    block.Append(content.data(), content.size());
    BlockZlibCompressor compress(level, encoder);
    compress(block);
    return Content(block);
}

std::string Inflated(std::string const& stream, std::size_t length)
{
    std::string content(length + 1, '\0');
    uLongf inflated = content.size();
    auto* const target = reinterpret_cast<Bytef*>(content.data());
    if (uncompress(target, &inflated, reinterpret_cast<Bytef const*>(stream.data()),
                   stream.size()) != Z_OK)
        return "not a zlib stream";
    return content.substr(0, inflated);
}

TEST(BlockEncoder, IsFoundByTheNameThatIsListed)
{
    std::string names;
    for (BlockEncoder const* const encoder : Encoders()) {
        EXPECT_EQ(FindEncoder(encoder->name), encoder);
        names += (names.empty() ? "" : ", ") + std::string(encoder->name);
    }
    EXPECT_EQ(NamesOfEncoders(), names);
    for (char const* const name : {"", "Zlib", "zlib ", "gzip"})
        EXPECT_EQ(FindEncoder(name), nullptr) << name;
}

TEST(BlockEncoder, MakesAStreamByItselfWhereItCan)
{
    std::string const content(100000, 'a');
    auto const* const source = reinterpret_cast<unsigned char const*>(content.data());
    for (BlockEncoder const* const encoder : Encoders()) {
        std::string buffer(1000, '\0');
        auto* const target = reinterpret_cast<unsigned char*>(buffer.data());
        auto const written = encoder->encode(source, content.size(), target, buffer.size(), 6);
        ASSERT_TRUE(written.has_value()) << encoder->name;
        EXPECT_EQ(Inflated(buffer.substr(0, *written), content.size()), content) << encoder->name;
        EXPECT_FALSE(encoder->encode(source, content.size(), target, 1, 6)) << encoder->name;
        EXPECT_FALSE(encoder->encode(source, content.size(), target, buffer.size(), 99))
            << encoder->name;
    }
}

/// A log that one build wrote is read by others: their libraries have to agree at each length, also
/// where bytes begin at no even address and follow others.
TEST(BlockEncoder, HasTheChecksumOfZlib)
{
    std::vector<unsigned char> bytes(5000);
    for (std::size_t at = 0; at < bytes.size(); ++at)
        bytes[at] = static_cast<unsigned char>((at * 2654435761U) >> 13U);
    std::vector<std::size_t> lengths{1023, 1024, 4099, 4900};
    for (std::size_t length = 0; length <= 300; ++length)
        lengths.push_back(length);
    for (std::size_t const length : lengths)
        for (std::size_t const first : {0U, 1U, 12U, 61U})
            for (std::uint32_t const before : {0U, 1U, 0xFFFFFFFFU, 0x12345678U}) {
                auto const expected = crc32_z(before, &bytes[first], length);
                for (BlockEncoder const* const encoder : Encoders())
                    ASSERT_EQ(encoder->checksum(before, &bytes[first], length), expected)
                        << encoder->name << ", " << length << " bytes from " << first;
            }
}

TEST(BlockZlibCompressor, WhatTheEncoderCantDoIsLeftToZlib)
{
    for (BlockEncoder const* const encoder : Encoders())
        for (int const level : {-1, 0})
            EXPECT_EQ(Compressed("abc", level, *encoder), Compressed("abc", level))
                << encoder->name << level;
}

TEST(BlockZlibCompressor, SmallAndLargeBlocksOfEveryKindInflateToWhatTheyWere)
{
    for (std::size_t const length : {1U, 2U, 100U, 65535U, 65536U, 3000000U}) {
        std::string content;
        unsigned int state = 1;
        for (std::size_t byte = 0; byte < length; ++byte) {
            state = state * 1103515245U + 12345U;
            content.push_back(static_cast<char>(state >> (byte % 5 == 0 ? 16U : 29U) & 0xFFU));
        }
        for (BlockEncoder const* const encoder : Encoders()) {
            std::string const compressed = Compressed(content, 6, *encoder);
            EXPECT_EQ(Inflated(compressed.substr(4), length), content) << encoder->name << length;
        }
    }
}

TEST(BlockZlibCompressor, WhatCannotBeMadeSmallerStillFits)
{
    std::string content;
    unsigned int state = 1;
    for (int byte = 0; byte < 100000; ++byte) {
        state = state * 1103515245U + 12345U;
        content.push_back(static_cast<char>(state >> 16U & 0xFFU));
    }
    for (BlockEncoder const* const encoder : Encoders()) {
        std::string const compressed = Compressed(content, 6, *encoder);
        ASSERT_GT(compressed.size(), content.size()) << encoder->name;
        EXPECT_EQ(compressed.substr(0, 4), Hex("A0 86 01 00"));
        EXPECT_EQ(Inflated(compressed.substr(4), content.size()), content) << encoder->name;
    }
}

TEST(BlockZlibCompressor, OnlyTheLengthCountsNotTheCursor)
{
    Block block;
    block.Append("aaaaaaaa", 8);
    block.SetPosition(3);
    BlockZlibCompressor compress(6);
    compress(block);
    EXPECT_EQ(Content(block), Hex("08 00 00 00 78 9C 4B 4C 84 00 00 0D AC 03 09"));
    EXPECT_EQ(block.GetPosition(), block.GetLength());
}

TEST(BlockZlibCompressor, TheLevelIsTheOneAskedFor)
{
    std::string const stored = Compressed("aaaaaaaa", 0);
    EXPECT_EQ(stored, Hex("08 00 00 00 78 01 01 08 00 F7 FF 61 61 61 61 61 61 61 61 0D AC 03 09"));
}

TEST(BlockZlibCompressor, ACompressionThatFailsLeavesTheBlockEmptyAndSaysNothing)
{
    Block block;
    block.Append("abc", 3);
    BlockZlibCompressor compress(99);
    EXPECT_NO_THROW(compress(block));
    EXPECT_EQ(block.GetLength(), 0U);
    EXPECT_EQ(block.GetPosition(), 0U);
    EXPECT_EQ(block.GetCapacity(), 0U);
    EXPECT_EQ(block.GetData(), nullptr);
}

TEST(BlockZlibCompressor, WithoutABufferTheBlockStaysAsItWas)
{
    Block block;
    block.Append("aaaaaaaa", 8);
    Support::expectThrown<Zyl2::Exception::MemoryAllocationException>(
        [&block] {
            BlockZlibCompressor compress(6);
            Support::FailingAllocation const failing(0);
            compress(block);
        },
        {16, "Memory allocation error", "Zyl2Wvf::BlockZlibCompressor::operator()",
         "Zyl2/Wvf/BlockZlibCompressor"});
    EXPECT_EQ(Content(block), "aaaaaaaa");
}

TEST(BlockZlibCompressor, LeavesALargeContentsBufferAndTakesTheOneForStreams)
{
    SpareBuffers spares;
    Zyl2Util::Buffer stream;
    ASSERT_TRUE(stream.Grow(8 * Zyl2Util::Buffer::LargeSize));
    unsigned char const* const room = stream.GetData();
    spares.stream.Leave(std::move(stream));
    std::string const content(Zyl2Util::Buffer::LargeSize, 'a');
    Block block;
    block.Append(content.data(), content.size());
    unsigned char const* const held = block.GetData();
    BlockZlibCompressor compress(6, ZlibEncoder, spares);
    compress(block);
    EXPECT_EQ(block.GetData(), room);
    EXPECT_EQ(spares.content.Take().GetData(), held);
    EXPECT_EQ(spares.stream.Take().GetData(), nullptr);
    EXPECT_EQ(Inflated(Content(block).substr(4), content.size()), content);
}

TEST(BlockZlibCompressor, KeepsNoSmallContentsBuffer)
{
    DefaultBlockSizeSetting const setting("100");
    SpareBuffers spares;
    Block block;
    block.Append("aaaaaaaa", 8);
    BlockZlibCompressor compress(6, ZlibEncoder, spares);
    compress(block);
    EXPECT_EQ(spares.content.Take().GetData(), nullptr);
    EXPECT_EQ(Inflated(Content(block).substr(4), 8), "aaaaaaaa");
}

} // namespace
