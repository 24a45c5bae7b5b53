#include "Zyl2/Wvf/Checksum.h"

#include "Zyl2/Wvf/BlockEncoder.h"

namespace Zyl2Wvf {

namespace {

/// zlib's, which comes first, takes ten times as long as the others', for a few bytes and for many.
BlockEncoder const& FastestEncoder() noexcept
{
    auto const encoders = Encoders();
    return *encoders.begin()[encoders.size() > 1 ? 1 : 0];
}

} // namespace

std::uint32_t Checksum(std::uint32_t before, unsigned char const* bytes,
                       std::size_t length) noexcept
{
    static auto* const checksum = FastestEncoder().checksum;
    return checksum(before, bytes, length);
}

} // namespace Zyl2Wvf
