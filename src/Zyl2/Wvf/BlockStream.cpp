// A compressed block:
//
//     +---------------------------+----------------------+
//     | uncompressed length, 4 LE | one zlib stream      |
//     +---------------------------+----------------------+
//
// An empty block is compressed too: four zero bytes, then the stream of nothing.

#include "Zyl2/Wvf/BlockStream.h"

#include <cstring>

namespace Zyl2Wvf {

namespace {

constexpr std::size_t PrefixLength = sizeof(std::uint32_t);

/// Room for what zlib makes of `length` bytes, incompressible ones too.
std::size_t CompressionBound(std::uint32_t length) noexcept
{
    return static_cast<std::size_t>(static_cast<float>(length) * 1.2F) + 12;
}

} // namespace

std::size_t BlockStreamCapacity(std::uint32_t length) noexcept
{
    return PrefixLength + CompressionBound(length);
}

std::optional<std::size_t> MakeBlockStream(unsigned char const* content, std::uint32_t length,
                                           unsigned char* stream, BlockEncoder const& encoder,
                                           int level) noexcept
{
    unsigned char const nothing = 0;
    unsigned char const* const source = length == 0 ? &nothing : content;
    unsigned char* const target = stream + PrefixLength;
    std::size_t const capacity = CompressionBound(length);
    std::memcpy(stream, &length, PrefixLength);
    auto written = encoder.encode(source, length, target, capacity, level);
    if (!written && &encoder != &ZlibEncoder)
        written = ZlibEncoder.encode(source, length, target, capacity, level);
    if (!written)
        return std::nullopt;
    return PrefixLength + *written;
}

} // namespace Zyl2Wvf
