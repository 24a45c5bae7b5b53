#ifndef ZYL2_UTIL_STRIDEDELEMENTS_H
#define ZYL2_UTIL_STRIDEDELEMENTS_H

#include "Zyl2/Util/StridedValues.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

// Helpers for code that looks at strided values one by one.

namespace Zyl2Util {

/// Calls `function` with a value of the type that the elements have.
template <typename Function>
auto WithElement(StridedValues::Element element, Function const& function)
{
    using Element = StridedValues::Element;
    switch (element) {
    // NOLINTNEXTLINE(bugprone-branch-clone): the branches differ in the type that they hand over
    case Element::Float:
        return function(float());
    case Element::Double:
        return function(double());
    case Element::Int32:
        return function(std::int32_t());
    case Element::UnsignedInt32:
        return function(std::uint32_t());
    case Element::Int64:
        return function(std::int64_t());
    case Element::UnsignedInt64:
        break;
    }
    return function(std::uint64_t());
}

/// Reads a value that need not be aligned: a host's strides may put values anywhere.
template <typename T>
T LoadFrom(unsigned char const* place)
{
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

inline unsigned char const* PlaceOf(StridedValues const& values, std::size_t row,
                                    std::size_t column)
{
    return values.first + static_cast<std::ptrdiff_t>(row) * values.rowStride +
           static_cast<std::ptrdiff_t>(column) * values.columnStride;
}

/// Whether the values lie one behind the other in row order.
inline bool AreContiguous(StridedValues const& values, std::size_t elementSize)
{
    auto const size = static_cast<std::ptrdiff_t>(elementSize);
    return (values.width == 1 || values.columnStride == size) &&
           values.rowStride == static_cast<std::ptrdiff_t>(values.width) * size;
}

/// Whether next to each other in memory are the values of a column rather than those of a row.
inline bool IsInColumnOrder(StridedValues const& values)
{
    return std::abs(values.rowStride) < std::abs(values.columnStride);
}

} // namespace Zyl2Util

#endif
