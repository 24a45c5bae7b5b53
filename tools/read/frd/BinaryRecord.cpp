// A binary record is a run of numbers without gaps, in the byte order of the machine that wrote
// them; files come from little-endian ones. A node with doubles:
//
//   07 00 00 00 | 00 00 00 00 00 00 F0 3F | 00 00 00 00 00 00 04 C0 | 00 00 00 00 00 00 00 00
//   number 7    | 1.0                     | -2.5                    | 0.0

#include "BinaryRecord.h"

#include <cstring>

namespace Frd {

namespace {

template <typename T>
T take(char const*& next)
{
    T value;
    std::memcpy(&value, next, sizeof(T));
    next += sizeof(T);
    return value;
}

} // namespace

std::int32_t BinaryRecord::integer()
{
    return take<std::int32_t>(next_);
}

double BinaryRecord::real(std::size_t size)
{
    if (size == sizeof(float))
        return static_cast<double>(take<float>(next_));
    return take<double>(next_);
}

} // namespace Frd
