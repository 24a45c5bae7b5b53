#include "moxread/WholeInflater.h"

#include <libdeflate.h>

#include <memory>

namespace MoxRead {

namespace {

struct FreeDecompressor
{
    void operator()(libdeflate_decompressor* decompressor) const noexcept
    {
        libdeflate_free_decompressor(decompressor);
    }
};

bool inflateByLibdeflate(std::uint8_t const* stream, std::size_t size, std::uint8_t* to,
                         std::size_t length) noexcept
{
    std::unique_ptr<libdeflate_decompressor, FreeDecompressor> const decompressor(
        libdeflate_alloc_decompressor());
    if (decompressor == nullptr)
        return false;
    // Without a place for the actual length, libdeflate refuses streams that inflate to less. It
    // never writes more than `length`.
    std::size_t taken = 0;
    libdeflate_result const result = libdeflate_zlib_decompress_ex(decompressor.get(), stream, size,
                                                                   to, length, &taken, nullptr);
    return result == LIBDEFLATE_SUCCESS && taken == size;
}

} // namespace

WholeInflater libdeflateInflater() noexcept
{
    return inflateByLibdeflate;
}

} // namespace MoxRead
