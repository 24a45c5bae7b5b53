// A compressed block:
//
//     +---------------------------+----------------------+
//     | uncompressed length, 4 LE | one zlib stream      |
//     +---------------------------+----------------------+
//
// An empty block is compressed too: four zero bytes, then the stream of nothing.

#include "Zyl2/Wvf/BlockZlibCompressor.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Util/Buffer.h"
#include "Zyl2/Wvf/Block.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace Sites = Zyl2::Exception::Sites::BlockZlibCompressor;
using Zyl2::Exception::raise;

constexpr std::size_t PrefixLength = sizeof(std::uint32_t);

/// Room for what zlib makes of `length` bytes, incompressible ones too.
std::size_t CompressionBound(std::uint32_t length)
{
    return static_cast<std::size_t>(static_cast<float>(length) * 1.2F) + 12;
}

/// One zlib stream, by the encoder or, where that can't, by zlib.
/// \return its bytes; nothing when it can't be made
std::optional<std::size_t> Deflate(BlockEncoder const& encoder, Block const& block,
                                   unsigned char* destination, std::size_t capacity, int level)
{
    unsigned char const nothing = 0;
    std::uint32_t const length = block.GetLength();
    unsigned char const* const source = length == 0 ? &nothing : block.GetData();
    if (auto const written = encoder.encode(source, length, destination, capacity, level))
        return written;
    if (&encoder == &ZlibEncoder())
        return std::nullopt;
    return ZlibEncoder().encode(source, length, destination, capacity, level);
}

} // namespace

void BlockZlibCompressor::operator()(Block& block)
{
    std::uint32_t const length = block.GetLength();
    std::size_t const capacity = PrefixLength + CompressionBound(length);
    Zyl2Util::Buffer buffer;
    if (spares_ != nullptr)
        buffer = std::move(spares_->stream);
    if (!buffer.Grow(capacity))
        raise(Sites::NoMemory);
    buffer.PreferHugePages();

    auto const compressed =
        Deflate(encoder_, block, buffer.GetData() + PrefixLength, capacity - PrefixLength, level_);
    if (!compressed) {
        block.Reset();
        return;
    }
    if (PrefixLength + *compressed > Block::MaximumLength)
        raise(Sites::TooLong);
    std::memcpy(buffer.GetData(), &length, PrefixLength);
    Replace(block, std::move(buffer), static_cast<std::uint32_t>(PrefixLength + *compressed));
}

void BlockZlibCompressor::Replace(Block& block, Zyl2Util::Buffer stream, std::uint32_t length)
{
    Zyl2Util::Buffer content = block.Release();
    if (spares_ != nullptr && content.GetSize() >= Zyl2Util::Buffer::LargeSize)
        spares_->content = std::move(content);
    block.Adopt(std::move(stream), length);
}

} // namespace Zyl2Wvf
