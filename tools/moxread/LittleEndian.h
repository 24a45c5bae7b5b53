#ifndef MOXREAD_LITTLEENDIAN_H
#define MOXREAD_LITTLEENDIAN_H

#include "moxread/Export.h"

#include <cstdint>

namespace MoxRead {

MOXREAD_EXPORT std::uint32_t decodeUint32(std::uint8_t const* bytes);
MOXREAD_EXPORT std::uint64_t decodeUint64(std::uint8_t const* bytes);

/// The number whose IEEE 754 representation is the given word.
MOXREAD_EXPORT float floatFromBits(std::uint32_t bits);
MOXREAD_EXPORT double doubleFromBits(std::uint64_t bits);

} // namespace MoxRead

#endif
