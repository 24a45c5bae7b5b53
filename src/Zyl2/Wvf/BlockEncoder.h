#ifndef ZYL2_WVF_BLOCKENCODER_H
#define ZYL2_WVF_BLOCKENCODER_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace Zyl2Wvf {

/// One of the libraries that make the streams of compressed blocks.
struct BlockEncoder
{
    /// What users know it by.
    char const* name;

    /// Encodes `length` bytes as one zlib stream. Threads may call it at the same time.
    ///
    /// \param destination `capacity` bytes
    /// \param level       zlib's compression level; an encoder that has others takes its nearest
    /// \return bytes of the stream; nothing when the encoder can't do it: zlib has to try then
    std::optional<std::size_t> (*encode)(unsigned char const* source, std::size_t length,
                                         unsigned char* destination, std::size_t capacity,
                                         int level) noexcept;

    /// CRC-32, the same with all of them.
    /// \param before checksum of the bytes that these follow; 0 where they are the first
    std::uint32_t (*checksum)(std::uint32_t before, unsigned char const* bytes,
                              std::size_t length) noexcept;
};

extern BlockEncoder const ZlibEncoder;
/// Has no definition where the library behind it was not found.
extern BlockEncoder const LibdeflateEncoder;
/// \copydoc LibdeflateEncoder
extern BlockEncoder const IsalEncoder;

/// Those that are there, zlib first.
std::initializer_list<BlockEncoder const*> Encoders() noexcept;

/// Null when no encoder that is there has the name.
BlockEncoder const* FindEncoder(std::string_view name) noexcept;

/// Of those that are there, such as "zlib, libdeflate".
std::string NamesOfEncoders();

} // namespace Zyl2Wvf

#endif
