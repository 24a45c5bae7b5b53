#ifndef ZYL2_UTIL_MISFIT_H
#define ZYL2_UTIL_MISFIT_H

#include "Zyl2/Util/StridedValues.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Zyl2Util {

/// A value that has no place among the 4-byte ones.
struct Misfit
{
    std::size_t row;
    std::size_t column;
    /// The value itself, in digits.
    std::string value;
    /// The range that the value is beyond, in words.
    char const* range;
};

/// The first value, in row order, that can't be stored: a finite double whose nearest float is
/// infinite, a negative integer, or one above 4294967295.
std::optional<Misfit> FindMisfit(StridedValues const& values);

} // namespace Zyl2Util

#endif
