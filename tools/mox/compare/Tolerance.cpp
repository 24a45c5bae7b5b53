#include "Tolerance.h"

#include <algorithm>
#include <cmath>

namespace Mox {

bool Tolerance::accepts(double left, double right) const
{
    if (left == right || (std::isnan(left) && std::isnan(right)))
        return true;
    double const difference = std::abs(left - right);
    if (!std::isfinite(difference))
        return false;
    return difference <= absolute ||
           difference <= relative * std::max(std::abs(left), std::abs(right));
}

} // namespace Mox
