#include "Zyl2/Wvf/Checksum.h"

#include "Zyl2/Wvf/BlockEncoder.h"

namespace Zyl2Wvf {

namespace {

/// zlib's takes ten times as long as the others', for a few bytes and for many.
BlockEncoder const& FastestEncoder() noexcept
{
    BlockEncoder const* const other =
        LibdeflateEncoder() != nullptr ? LibdeflateEncoder() : IsalEncoder();
    return other != nullptr ? *other : ZlibEncoder();
}

} // namespace

std::uint32_t Checksum(std::uint32_t before, unsigned char const* bytes,
                       std::size_t length) noexcept
{
    static auto* const checksum = FastestEncoder().checksum;
    return checksum(before, bytes, length);
}

} // namespace Zyl2Wvf
