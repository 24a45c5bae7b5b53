#ifndef MOX_COMPARE_TOLERANCE_H
#define MOX_COMPARE_TOLERANCE_H

namespace Mox {

/// How far two numbers may be from each other and still count as equal. One of the two bounds is
/// enough.
struct Tolerance
{
    double absolute = 0;
    /// A factor of the larger one of the two magnitudes.
    double relative = 0;

    /// NaN is equal to NaN only, and an infinite number only to itself.
    bool accepts(double left, double right) const;
};

} // namespace Mox

#endif
