#ifndef ZYL2_MOX_ARRAYDESCRIPTION_H
#define ZYL2_MOX_ARRAYDESCRIPTION_H

#include "Zyl2/Mox/NumericArray.h"

#include <array>
#include <cstdint>

namespace Zyl2Mox {

/// What a variable's header says of its array. Holds no values: they are in the file already.
struct ArrayDescription
{
    /// The type of the values, which stands in the high byte of the header's type word.
    ElementCode kind = ElementCode::None;
    /// Number of values: rows times width.
    std::int32_t valueCount = 0;
    /// Values per row.
    std::uint8_t width = 0;
    std::array<bool, 2> flags{};
    std::array<float, 2> floats{};
    bool lastFlag = false;
};

/// The one place that decides how an array is described.
ArrayDescription Describe(NumericArray const& array);

} // namespace Zyl2Mox

#endif
