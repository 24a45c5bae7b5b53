#include "ElementSize.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Mox::Check {

namespace {

// Rounding moves each of several nodes; parts that cancel have to be clearly larger.
constexpr double certainty = 16;

Point operator-(Point const& left, Point const& right)
{
    return {left[0] - right[0], left[1] - right[1], left[2] - right[2]};
}

Point operator+(Point const& left, Point const& right)
{
    return {left[0] + right[0], left[1] + right[1], left[2] + right[2]};
}

Point operator*(double factor, Point const& point)
{
    return {factor * point[0], factor * point[1], factor * point[2]};
}

double dot(Point const& left, Point const& right)
{
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

Point cross(Point const& left, Point const& right)
{
    return {left[1] * right[2] - left[2] * right[1], left[2] * right[0] - left[0] * right[2],
            left[0] * right[1] - left[1] * right[0]};
}

double length(Point const& vector)
{
    return std::sqrt(dot(vector, vector));
}

Point middleOf(ElementKind::Path const& path, std::vector<Point> const& nodes)
{
    Point sum = {};
    for (std::uint32_t const node : path)
        sum = sum + nodes[node];
    return 1.0 / static_cast<double>(path.size()) * sum;
}

// Calls visit(middle, area, side) for each triangle; the area is a vector.
template <typename Visit>
void forEachTriangle(ElementKind::Path const& path, std::vector<Point> const& nodes,
                     Visit const& visit)
{
    Point const middle = middleOf(path, nodes);
    for (std::size_t i = 0; i < path.size(); ++i) {
        Point const& from = nodes[path[i]];
        Point const& to = nodes[path[(i + 1) % path.size()]];
        visit(middle, 0.5 * cross(from - middle, to - middle), length(to - from));
    }
}

// By how much a float of the size of the coordinates may be off.
double roundingOf(std::vector<Point> const& nodes)
{
    double greatest = 0;
    for (Point const& node : nodes)
        for (double const coordinate : node)
            greatest = std::max(greatest, std::abs(coordinate));
    return greatest * static_cast<double>(std::numeric_limits<float>::epsilon());
}

} // namespace

ElementSize::ElementSize(ElementKind const& kind, std::vector<Point> const& nodes)
    : hasSize_(kind.dimension > 0)
{
    if (kind.dimension == 1)
        measureLine(kind, nodes);
    else if (kind.dimension == 2)
        measureSurface(kind, nodes);
    else if (kind.dimension == 3)
        measureSolid(kind, nodes);
}

bool ElementSize::isNegative() const
{
    return value_ < -uncertainty_;
}

bool ElementSize::isZero() const
{
    return hasSize_ && std::abs(value_) <= uncertainty_;
}

bool ElementSize::isTwisted() const
{
    return isZero() && parts_ > certainty * uncertainty_;
}

void ElementSize::measureLine(ElementKind const& kind, std::vector<Point> const& nodes)
{
    for (ElementKind::Path const& path : kind.paths)
        for (std::size_t i = 0; i + 1 < path.size(); ++i)
            value_ += length(nodes[path[i + 1]] - nodes[path[i]]);
    uncertainty_ = roundingOf(nodes);
}

void ElementSize::measureSurface(ElementKind const& kind, std::vector<Point> const& nodes)
{
    double around = 0;
    for (ElementKind::Path const& path : kind.paths) {
        Point sum = {};
        forEachTriangle(path, nodes, [&](Point const&, Point const& area, double side) {
            sum = sum + area;
            parts_ += length(area);
            around += side;
        });
        value_ += length(sum);
    }
    uncertainty_ = around * roundingOf(nodes);
}

// The sum of the pyramids between each triangle of the surface and one point, whichever it is; one
// inside keeps the numbers small.
void ElementSize::measureSolid(ElementKind const& kind, std::vector<Point> const& nodes)
{
    Point const inside = middleOf(kind.paths.front(), nodes);
    double surface = 0;
    for (ElementKind::Path const& path : kind.paths) {
        forEachTriangle(path, nodes, [&](Point const& middle, Point const& area, double) {
            double const part = dot(middle - inside, area) / 3;
            value_ += part;
            parts_ += std::abs(part);
            surface += length(area);
        });
    }
    uncertainty_ = surface * roundingOf(nodes);
}

} // namespace Mox::Check
