#ifndef ZYL2_UTIL_STRIDEDVALUES_H
#define ZYL2_UTIL_STRIDEDVALUES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

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

/// A value that has no place among the 4-byte ones.
struct Misfit
{
    std::size_t row;
    std::size_t column;
    /// As it is, in digits.
    std::string value;
};

/// The first value, in row order, that can't be stored: a finite double whose nearest float is
/// infinite, a negative integer, or one above 4294967295.
std::optional<Misfit> FindMisfit(StridedValues const& values);

/// Does what `ShuffleColumns` does with the same values as 4-byte ones in row order, without such
/// an array: doubles become the nearest floats, integers unsigned ones. \param values      without
/// a misfit \param destination rows x width x 4 bytes, apart from the values
void ShuffleStrided(StridedValues const& values, void* destination);

/// Puts some rows to their places among those of a larger table.
/// \param piece       without a misfit
/// \param firstRow    number of the piece's first row in the table
/// \param rows        rows of the table
/// \param destination rows x width x 4 bytes: the whole table, shuffled
void ShufflePiece(StridedValues const& piece, std::size_t firstRow, std::size_t rows,
                  void* destination);

} // namespace Zyl2Util

#endif
