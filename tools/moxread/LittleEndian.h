#pragma once

#include <cstdint>

namespace MoxRead {

std::uint32_t decodeUint32(const std::uint8_t* bytes);
std::uint64_t decodeUint64(const std::uint8_t* bytes);

/// The number whose IEEE 754 representation is the given word.
float floatFromBits(std::uint32_t bits);
double doubleFromBits(std::uint64_t bits);

} // namespace MoxRead
