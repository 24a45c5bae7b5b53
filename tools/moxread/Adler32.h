#ifndef MOXREAD_ADLER32_H
#define MOXREAD_ADLER32_H

#include <cstddef>
#include <cstdint>

namespace MoxRead {

/// The checksum at the end of a zlib stream.
/// \param before of the bytes before these
std::uint32_t adler32Of(std::uint8_t const* bytes, std::size_t count,
                        std::uint32_t before = 1) noexcept;

} // namespace MoxRead

#endif
