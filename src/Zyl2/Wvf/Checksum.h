#ifndef ZYL2_WVF_CHECKSUM_H
#define ZYL2_WVF_CHECKSUM_H

#include <cstddef>
#include <cstdint>

namespace Zyl2Wvf {

/// CRC-32 as in gzip, counted by the fastest of the encoders' libraries that are there.
/// \param before checksum of the bytes that these follow; 0 where they are the first
std::uint32_t Checksum(std::uint32_t before, unsigned char const* bytes,
                       std::size_t length) noexcept;

} // namespace Zyl2Wvf

#endif
