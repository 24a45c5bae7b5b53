// uint32   b0 b1 b2 b3               value = b0 + b1 * 2^8 + b2 * 2^16 + b3 * 2^24
// uint64   b0 b1 b2 b3 b4 b5 b6 b7   value = (b0..b3) + (b4..b7) * 2^32
// float, double: the IEEE 754 bits as a uint32, uint64

#include "moxread/LittleEndian.h"

#include <cstring>

namespace MoxRead {

std::uint32_t decodeUint32(std::uint8_t const* bytes)
{
    std::uint32_t value = 0;
    for (unsigned i = 0; i < 4; ++i)
        value |= std::uint32_t{bytes[i]} << (8U * i);
    return value;
}

std::uint64_t decodeUint64(std::uint8_t const* bytes)
{
    return decodeUint32(bytes) | std::uint64_t{decodeUint32(bytes + 4)} << 32U;
}

float floatFromBits(std::uint32_t bits)
{
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

double doubleFromBits(std::uint64_t bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace MoxRead
