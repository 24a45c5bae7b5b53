#ifndef ZYL2_UTIL_STRIDEDVALUES_H
#define ZYL2_UTIL_STRIDEDVALUES_H

#include <cstddef>
#include <cstdint>

namespace Zyl2Util {

/// A table of numbers that somebody else holds, wherever each of them lies:
///
///     (row, column)  at  first + row * rowStride + column * columnStride        bytes, of any sign
struct StridedValues
{
    enum class Element : std::uint32_t
    {
        Float = 0,
        Double = 1,
        Int32 = 2,
        UnsignedInt32 = 3,
        Int64 = 4,
        UnsignedInt64 = 5
    };

    unsigned char const* first;
    std::size_t rows;
    std::size_t width;
    std::ptrdiff_t rowStride;
    std::ptrdiff_t columnStride;
    Element element;
};

/// Whether the values are stored as floats; otherwise as unsigned 32-bit integers.
bool AreStoredAsFloats(StridedValues const& values);

/// Does what `ShuffleColumns` does with the same values as 4-byte ones in row order, without such
/// an array: doubles become the nearest floats, integers unsigned ones.
/// \param values      of at least one row and one column
/// \param destination rows x width x 4 bytes, apart from the values
/// \return whether all values can be stored; where `FindMisfit` finds one that can't, what is at
///         the destination means nothing
bool ShuffleStrided(StridedValues const& values, void* destination);

/// Puts some rows to their places among those of a larger table.
/// \param piece       of at least one row and one column, without a misfit
/// \param firstRow    number of the piece's first row in the table
/// \param rows        rows of the table
/// \param destination rows x width x 4 bytes: the whole table, shuffled
void ShufflePiece(StridedValues const& piece, std::size_t firstRow, std::size_t rows,
                  void* destination);

} // namespace Zyl2Util

#endif
