#include "Zyl2/Util/ShuffleKernels.h"

// One column at a time, one byte at a time:
//
//     | x0 | y0 | z0 | x1 | y1 | z1 | ...                       4 bytes each, in row order
//       |              |
//       b0 b1 b2 b3    b0 b1 b2 b3
//
//     | b0 of x0, x1, ... | b1 of x0, x1, ... | b2 ... | b3 ... | b0 of y0, y1, ... | ...

namespace Zyl2Util {

namespace {

constexpr std::size_t ValueSize = 4;

void ShuffleColumn(unsigned char const* firstValue, std::size_t rows, std::size_t stride,
                   unsigned char* planes)
{
    unsigned char* const plane0 = planes;
    unsigned char* const plane1 = planes + rows;
    unsigned char* const plane2 = planes + rows * 2;
    unsigned char* const plane3 = planes + rows * 3;
    for (std::size_t row = 0; row < rows; ++row, firstValue += stride) {
        plane0[row] = firstValue[0];
        plane1[row] = firstValue[1];
        plane2[row] = firstValue[2];
        plane3[row] = firstValue[3];
    }
}

} // namespace

void ShufflePortable(void const* values, std::size_t rows, std::size_t width, void* destination)
{
    // No rows may come with null pointers, which mustn't be advanced.
    if (rows == 0)
        return;
    auto const* const source = static_cast<unsigned char const*>(values);
    auto* const target = static_cast<unsigned char*>(destination);
    for (std::size_t column = 0; column < width; ++column)
        ShuffleColumn(source + column * ValueSize, rows, width * ValueSize,
                      target + column * rows * ValueSize);
}

} // namespace Zyl2Util
