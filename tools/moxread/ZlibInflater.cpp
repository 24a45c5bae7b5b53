// zlib stream:
//
//   0         1  method 8 in the low 4 bits; above, log2 of the window's size, less 8: 0 to 7
//   1         1  flags: bit 5 for a preset dictionary; with the first byte, big-endian, a multiple
//                of 31
//   2        ..  deflate stream
//   size - 4  4  Adler-32 of what it inflates to, big-endian

#include "moxread/WholeInflater.h"

#include "moxread/Adler32.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace MoxRead {

namespace {

constexpr std::size_t headSize = 2;
constexpr std::size_t tailSize = 4;
constexpr std::size_t summedSize = std::size_t{1} << 17U;

bool isSoundHead(std::uint8_t const* stream)
{
    constexpr unsigned deflateMethod = 8;
    constexpr unsigned greatestWindow = 7;
    constexpr unsigned dictionaryFlag = 0x20;
    unsigned const method = stream[0];
    unsigned const flags = stream[1];
    return (method & 0xFU) == deflateMethod && method >> 4U <= greatestWindow &&
           (flags & dictionaryFlag) == 0 && (method << 8U | flags) % 31 == 0;
}

// Puts the checksum of what the deflate stream inflates to into `sum`, and returns whether all of
// the stream inflates to exactly that length. The sum of a piece is taken while it is in the cache.
bool inflateRaw(std::uint8_t const* stream, std::size_t size, std::uint8_t* to, std::size_t length,
                std::uint32_t& sum) noexcept
{
    z_stream state = {};
    if (::inflateInit2(&state, -MAX_WBITS) != Z_OK)
        return false;
    state.next_in = const_cast<std::uint8_t*>(stream);
    state.avail_in = static_cast<uInt>(size);
    std::size_t done = 0;
    int result = Z_OK;
    while (result == Z_OK) {
        std::size_t const piece = std::min(length - done, summedSize);
        state.next_out = to + done;
        state.avail_out = static_cast<uInt>(piece);
        result = ::inflate(&state, Z_NO_FLUSH);
        std::size_t const got = piece - state.avail_out;
        sum = adler32Of(to + done, got, sum);
        done += got;
    }
    ::inflateEnd(&state);
    return result == Z_STREAM_END && state.avail_in == 0 && done == length;
}

std::uint32_t bigEndian(std::uint8_t const* bytes)
{
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U |
           std::uint32_t{bytes[2]} << 8U | std::uint32_t{bytes[3]};
}

// zlib would take a fifth of the time for the checksum; it is taken apart from it.
bool inflateByZlib(std::uint8_t const* stream, std::size_t size, std::uint8_t* to,
                   std::size_t length) noexcept
{
    constexpr std::size_t most = std::numeric_limits<uInt>::max();
    if (size < headSize + tailSize || size > most || length > most || !isSoundHead(stream))
        return false;
    std::uint32_t sum = 1;
    return inflateRaw(stream + headSize, size - headSize - tailSize, to, length, sum) &&
           sum == bigEndian(stream + size - tailSize);
}

} // namespace

WholeInflater zlibInflater() noexcept
{
    return inflateByZlib;
}

} // namespace MoxRead
