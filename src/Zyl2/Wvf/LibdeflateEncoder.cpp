#include "Zyl2/Wvf/BlockEncoder.h"

#include <libdeflate.h>

#include <memory>

namespace Zyl2Wvf {

namespace {

struct FreeCompressor
{
    void operator()(libdeflate_compressor* compressor) const noexcept
    {
        libdeflate_free_compressor(compressor);
    }
};

/// On shuffled datasets a level makes streams as small as zlib's next higher one.
int EquivalentLevel(int level)
{
    return level > 1 ? level - 1 : level;
}

std::optional<std::size_t> EncodeByLibdeflate(unsigned char const* source, std::size_t length,
                                              unsigned char* destination, std::size_t capacity,
                                              int level) noexcept
{
    // Other levels are left to zlib, which refuses some that libdeflate knows.
    if (level < 1 || level > 9)
        return std::nullopt;
    std::unique_ptr<libdeflate_compressor, FreeCompressor> const compressor(
        libdeflate_alloc_compressor(EquivalentLevel(level)));
    if (compressor == nullptr)
        return std::nullopt;
    std::size_t const written =
        libdeflate_zlib_compress(compressor.get(), source, length, destination, capacity);
    return written == 0 ? std::nullopt : std::optional<std::size_t>(written);
}

std::uint32_t ChecksumByLibdeflate(std::uint32_t before, unsigned char const* bytes,
                                   std::size_t length) noexcept
{
    return libdeflate_crc32(before, bytes, length);
}

} // namespace

BlockEncoder const LibdeflateEncoder{"libdeflate", EncodeByLibdeflate, ChecksumByLibdeflate};

} // namespace Zyl2Wvf
