#ifndef MOX_CHECK_ELEMENTSIZE_H
#define MOX_CHECK_ELEMENTSIZE_H

#include "ElementKind.h"

#include <array>
#include <vector>

namespace Mox::Check {

using Point = std::array<double, 3>;

/// The length, area or volume of an element.
///
/// Faces are taken as triangles between their middle and their nodes. Of first-order elements that
/// is the volume that shape functions give, also where the nodes of a face lie in no plane. Of
/// second-order ones it is that of edges which are straight between mid-side nodes and corners.
class ElementSize
{
public:
    /// \param nodes positions of the element's nodes; as many as the kind's paths refer to
    ElementSize(ElementKind const& kind, std::vector<Point> const& nodes);

    /// Negative only for solids.
    double value() const { return value_; }

    /// Whether it is a solid whose nodes are in an order that turns it inside out.
    bool isNegative() const;

    /// Whether it is smaller than what comes of its coordinates being floats.
    bool isZero() const;

    /// Whether it is zero since parts of it cancel each other, as those of a quadrangle do whose
    /// sides cross: it is not flat, but its nodes are in a wrong order.
    bool isTwisted() const;

private:
    void measureLine(ElementKind const& kind, std::vector<Point> const& nodes);
    void measureSurface(ElementKind const& kind, std::vector<Point> const& nodes);
    void measureSolid(ElementKind const& kind, std::vector<Point> const& nodes);

    bool hasSize_;
    double value_ = 0;
    /// The sum without signs.
    double parts_ = 0;
    /// How much of it may come of rounding.
    double uncertainty_ = 0;
};

} // namespace Mox::Check

#endif
