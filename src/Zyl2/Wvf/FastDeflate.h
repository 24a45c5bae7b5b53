#ifndef ZYL2_WVF_FASTDEFLATE_H
#define ZYL2_WVF_FASTDEFLATE_H

#include <cstddef>
#include <optional>

namespace Zyl2Wvf {

/// Name of the encoder that this library was built with: "zlib", "libdeflate" or "isal".
char const* DeflateEncoderName() noexcept;

/// Encodes `length` bytes as one zlib stream, by the encoder that was chosen to stand in for zlib.
///
/// \param destination `capacity` bytes
/// \param level       zlib's compression level; an encoder that has others takes its nearest
/// \return bytes of the stream; nothing when the encoder can't do it, so that zlib has to, and
///         always when no other encoder was chosen
std::optional<std::size_t> FastDeflate(unsigned char const* source, std::size_t length,
                                       unsigned char* destination, std::size_t capacity,
                                       int level) noexcept;

} // namespace Zyl2Wvf

#endif
