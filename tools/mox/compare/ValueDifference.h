#ifndef MOX_COMPARE_VALUEDIFFERENCE_H
#define MOX_COMPARE_VALUEDIFFERENCE_H

#include "Tolerance.h"

#include "moxread/Dataset.h"

#include <cstddef>
#include <optional>

namespace Mox {

/// How the values of two datasets of the same shape and element type differ.
struct ValueDifference
{
    /// Two numbers that differ, and where they are.
    struct Place
    {
        double difference = 0;
        std::size_t row = 0;
        std::size_t column = 0;
        double left = 0;
        double right = 0;
    };

    bool isFloat = true;
    std::size_t rows = 0;
    /// Rows in which at least one value is not as the tolerance demands.
    std::size_t differingRows = 0;
    /// Values that are NaN in one of the two only; they have no difference.
    std::size_t notNumbers = 0;
    /// Where values differ most; none when all that differ are NaN in one of the two.
    std::optional<Place> largestAbsolute;
    /// Where they differ most in relation to the larger one of the two magnitudes.
    std::optional<Place> largestRelative;

    bool isEqual() const { return differingRows == 0; }

    /// The tolerance is for floats; uint32s, which are numbers of things, have to be the same.
    static ValueDifference of(MoxRead::Dataset const& left, MoxRead::Dataset const& right,
                              Tolerance const& tolerance);
};

} // namespace Mox

#endif
