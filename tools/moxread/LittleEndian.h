#ifndef MOXREAD_LITTLEENDIAN_H
#define MOXREAD_LITTLEENDIAN_H

#include <cstdint>

namespace MoxRead {

std::uint32_t decodeUint32(std::uint8_t const* bytes);
std::uint64_t decodeUint64(std::uint8_t const* bytes);

/// The number whose IEEE 754 representation is the given word.
float floatFromBits(std::uint32_t bits);
double doubleFromBits(std::uint64_t bits);

} // namespace MoxRead

#endif
