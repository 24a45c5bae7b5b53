#ifndef EXCHANGE_NEARESTFLOAT_H
#define EXCHANGE_NEARESTFLOAT_H

#include <cmath>
#include <limits>

namespace Exchange {

/// The conversion alone is undefined for what a float can't hold; such values become infinite.
inline float nearestFloat(double value)
{
    if (std::isfinite(value) && std::fabs(value) > std::numeric_limits<float>::max())
        return std::copysign(std::numeric_limits<float>::infinity(), value > 0 ? 1.0F : -1.0F);
    return static_cast<float>(value);
}

} // namespace Exchange

#endif
