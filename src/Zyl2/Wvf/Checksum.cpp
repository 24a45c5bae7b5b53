#include "Zyl2/Wvf/Checksum.h"

#include "Zyl2/Wvf/BlockEncoder.h"

#include <algorithm>
#include <array>

namespace Zyl2Wvf {

namespace {

/// zlib's takes ten times as long as the others', for a few bytes and for many.
BlockEncoder const& FastestEncoder() noexcept
{
    std::array<BlockEncoder const*, 3> const encoders{LibdeflateEncoder(), IsalEncoder(),
                                                      &ZlibEncoder()};
    return **std::find_if(encoders.begin(), encoders.end(),
                          [](BlockEncoder const* encoder) { return encoder != nullptr; });
}

} // namespace

std::uint32_t Checksum(std::uint32_t before, unsigned char const* bytes,
                       std::size_t length) noexcept
{
    static auto* const checksum = FastestEncoder().checksum;
    return checksum(before, bytes, length);
}

} // namespace Zyl2Wvf
