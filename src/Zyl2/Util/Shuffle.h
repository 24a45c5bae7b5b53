#ifndef ZYL2_UTIL_SHUFFLE_H
#define ZYL2_UTIL_SHUFFLE_H

#include "Zyl2/Util/ShuffleInput.h"

#include <cstddef>
#include <vector>

namespace Zyl2Util {

/// Sorts the bytes of 4-byte values by significance, which makes them compress better.
///
/// rows x width values in row order become, for each column in turn, four byte planes:
///
///     x0 y0 z0 x1 y1 z1 ...   ->   | x byte 0 | x byte 1 | x byte 2 | x byte 3 | y byte 0 | ...
///                                  each plane: rows bytes, one of each row
///
/// \param input       rows x width values
/// \param rows        values per column
/// \param width       columns
/// \param destination rows x width x 4 bytes, apart from the values
void ShuffleColumns(ShuffleInput const& input, std::size_t rows, std::size_t width,
                    void* destination);

/// Turns the values into four byte planes, in place.
/// \tparam T `float` or `unsigned int`
template <typename T>
void ShuffleVectorBytes(std::vector<T>& values);

/// Turns the values, rows of `width`, into four byte planes for each column, in place. Values that
/// fill no whole row stay as they are at the end. A width of 0 changes nothing.
/// \tparam T `float` or `unsigned int`
template <typename T>
void ShuffleMultiVectorBytes(std::vector<T>& values, unsigned char width);

} // namespace Zyl2Util

#endif
