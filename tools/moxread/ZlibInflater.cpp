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

#include <limits>

namespace MoxRead {

namespace {

constexpr std::size_t headSize = 2;
constexpr std::size_t tailSize = 4;

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

// Whether all of the deflate stream inflates to exactly that length.
bool inflateRaw(std::uint8_t const* stream, std::size_t size, std::uint8_t* to,
                std::size_t length) noexcept
{
    z_stream state = {};
    if (::inflateInit2(&state, -MAX_WBITS) != Z_OK)
        return false;
    state.next_in = const_cast<std::uint8_t*>(stream);
    state.avail_in = static_cast<uInt>(size);
    state.next_out = to;
    state.avail_out = static_cast<uInt>(length);
    int const result = ::inflate(&state, Z_FINISH);
    ::inflateEnd(&state);
    return result == Z_STREAM_END && state.avail_in == 0 && state.avail_out == 0;
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
    return inflateRaw(stream + headSize, size - headSize - tailSize, to, length) &&
           adler32Of(to, length) == bigEndian(stream + size - tailSize);
}

} // namespace

WholeInflater zlibInflater() noexcept
{
    return inflateByZlib;
}

} // namespace MoxRead
