// The values of the streams: integers little-endian, floating-point numbers as their IEEE 754 bits,
// a text as a uint32 length and its characters.

#include "Bytes.h"

#include <cstring>
#include <utility>

namespace MoxReadTest {

Bytes::Bytes(std::string bytes) : bytes_(std::move(bytes)) {}

Bytes& Bytes::u8(unsigned value)
{
    return littleEndian(value, 1);
}

Bytes& Bytes::u32(std::uint64_t value)
{
    return littleEndian(value, 4);
}

Bytes& Bytes::u64(std::uint64_t value)
{
    return littleEndian(value, 8);
}

Bytes& Bytes::f32(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return u32(bits);
}

Bytes& Bytes::f64(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return u64(bits);
}

Bytes& Bytes::text(std::string const& value)
{
    return u32(value.size()).raw(value);
}

Bytes& Bytes::raw(std::string const& value)
{
    bytes_ += value;
    return *this;
}

std::string const& Bytes::str() const
{
    return bytes_;
}

Bytes& Bytes::littleEndian(std::uint64_t value, unsigned size)
{
    for (unsigned i = 0; i < size; ++i)
        bytes_ += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    return *this;
}

} // namespace MoxReadTest
