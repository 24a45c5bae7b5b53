// Adler-32 of the bytes x(0) to x(n - 1), modulo 65521:
//
//   low half   1 + x(0) + ... + x(n - 1)
//   high half  sum of the low halves after each byte: n + n x(0) + (n - 1) x(1) + ... + x(n - 1)

#include "moxread/Adler32.h"

#include <array>

namespace MoxRead {

namespace {

constexpr std::uint32_t modulus = 65521;
// The sums of so many bytes need no more than 32 bits, and their weights no more than 16.
constexpr std::size_t chunkSize = 256;

using Weights = std::array<std::int16_t, chunkSize>;

constexpr Weights falling()
{
    Weights weights = {};
    for (std::size_t i = 0; i < chunkSize; ++i)
        weights[i] = static_cast<std::int16_t>(chunkSize - i);
    return weights;
}

constexpr Weights weights = falling();

struct Sums
{
    std::uint32_t low;
    std::uint32_t high;

    void addChunk(std::uint8_t const* bytes);
    void addByte(std::uint8_t byte);
};

// Compilers make vector code of products of 16 bits.
void Sums::addChunk(std::uint8_t const* bytes)
{
    std::int32_t plain = 0;
    std::int32_t weighted = 0;
    for (std::size_t i = 0; i < chunkSize; ++i) {
        std::int16_t const byte = bytes[i];
        plain += byte;
        weighted += byte * weights[i];
    }
    high += low * static_cast<std::uint32_t>(chunkSize) + static_cast<std::uint32_t>(weighted);
    low = (low + static_cast<std::uint32_t>(plain)) % modulus;
    high %= modulus;
}

void Sums::addByte(std::uint8_t byte)
{
    low = (low + byte) % modulus;
    high = (high + low) % modulus;
}

} // namespace

std::uint32_t adler32Of(std::uint8_t const* bytes, std::size_t count, std::uint32_t before) noexcept
{
    Sums sums{before & 0xFFFFU, before >> 16U};
    std::size_t done = 0;
    for (; count - done >= chunkSize; done += chunkSize)
        sums.addChunk(bytes + done);
    for (; done < count; ++done)
        sums.addByte(bytes[done]);
    return sums.high << 16U | sums.low;
}

} // namespace MoxRead
