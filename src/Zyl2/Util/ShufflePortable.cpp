#include "Zyl2/Util/ShuffleKernels.h"

#include <algorithm>
#include <array>

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
constexpr std::size_t PieceRows = 64;
constexpr std::size_t PieceColumns = 16;

/// \param distance bytes from one plane to the next
void ShuffleColumn(unsigned char const* firstValue, std::size_t rows, std::size_t stride,
                   unsigned char* planes, std::size_t distance)
{
    unsigned char* const plane0 = planes;
    unsigned char* const plane1 = planes + distance;
    unsigned char* const plane2 = planes + distance * 2;
    unsigned char* const plane3 = planes + distance * 3;
    for (std::size_t row = 0; row < rows; ++row, firstValue += stride) {
        plane0[row] = firstValue[0];
        plane1[row] = firstValue[1];
        plane2[row] = firstValue[2];
        plane3[row] = firstValue[3];
    }
}

void ShuffleConverted(ValueConverter& converter, std::size_t rows, std::size_t width,
                      unsigned char* target)
{
    std::array<unsigned char, PieceRows * PieceColumns * ValueSize> piece;
    for (std::size_t row = 0; row < rows; row += PieceRows)
        for (std::size_t column = 0; column < width; column += PieceColumns) {
            TablePart const part{row, std::min(PieceRows, rows - row), column,
                                 std::min(PieceColumns, width - column)};
            converter.Convert(part, piece.data());
            for (std::size_t at = 0; at < part.columns; ++at)
                ShuffleColumn(piece.data() + at * ValueSize, part.rows, part.columns * ValueSize,
                              target + (column + at) * rows * ValueSize + row, rows);
        }
}

} // namespace

void ShufflePortable(ShuffleInput const& input, std::size_t rows, std::size_t width,
                     void* destination)
{
    // No rows may come with null pointers, which mustn't be advanced.
    if (rows == 0)
        return;
    auto* const target = static_cast<unsigned char*>(destination);
    if (input.converter != nullptr)
        return ShuffleConverted(*input.converter, rows, width, target);
    for (std::size_t column = 0; column < width; ++column)
        ShuffleColumn(input.values + column * ValueSize, rows, width * ValueSize,
                      target + column * rows * ValueSize, rows);
}

} // namespace Zyl2Util
