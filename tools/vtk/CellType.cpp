#include "CellType.h"

#include <vtkCellType.h>

#include <algorithm>

namespace Vtk {

namespace {

using Order = std::vector<std::size_t>;

constexpr std::size_t any = 0;

CellType cell(int number, char const* element, Order const& order = {})
{
    return {number, any, Exchange::ElementType::find(element), order};
}

CellType cellOf(int number, std::size_t pointCount, char const* element)
{
    return {number, pointCount, Exchange::ElementType::find(element), {}};
}

/// VTK has the base of a wedge counter-clockwise seen from outside, and an element has it so seen
/// from the top. Corners, edges of the base, those of the top, upright ones, faces between these.
/// VTK's wedges whose order may be chosen are as elements are.
Order wedge(std::ptrdiff_t nodeCount)
{
    static Order const all = {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13, 17, 16, 15};
    return {all.begin(), all.begin() + nodeCount};
}

/// An element is written as the first type here that is read as it.
///
/// Cells whose order may be chosen are elements where they are linear or quadratic and have their
/// points where an element has its nodes. Bezier cells have that when they are linear; else their
/// points are off the curve.
std::vector<CellType> const& allTypes()
{
    static std::vector<CellType> const types = {
        cell(VTK_VERTEX, "Point"),
        cell(VTK_POLY_VERTEX, "Polyvertex"),
        cell(VTK_LINE, "Line"),
        cell(VTK_POLY_LINE, "Polyline"),
        cell(VTK_TRIANGLE, "Triangle"),
        cell(VTK_TRIANGLE_STRIP, "Triangle strip"),
        cell(VTK_POLYGON, "Polygon"),
        cell(VTK_QUAD, "Quadrangle"),
        cell(VTK_PIXEL, "Quadrangle", {0, 1, 3, 2}),
        cell(VTK_TETRA, "Tetrahedron"),
        cell(VTK_HEXAHEDRON, "Hexahedron"),
        cell(VTK_VOXEL, "Hexahedron", {0, 1, 3, 2, 4, 5, 7, 6}),
        cell(VTK_WEDGE, "Wedge", wedge(6)),
        cell(VTK_PYRAMID, "Pyramid"),
        cell(VTK_PENTAGONAL_PRISM, "Pentagonal prism"),
        cell(VTK_HEXAGONAL_PRISM, "Hexagonal prism"),
        cell(VTK_QUADRATIC_EDGE, "Line 3"),
        cell(VTK_QUADRATIC_TRIANGLE, "Triangle 6"),
        cell(VTK_QUADRATIC_QUAD, "Quadrangle 8"),
        cell(VTK_QUADRATIC_POLYGON, "Quadratic polygon"),
        cell(VTK_QUADRATIC_TETRA, "Tetrahedron 10"),
        cell(VTK_QUADRATIC_HEXAHEDRON, "Hexahedron 20"),
        cell(VTK_QUADRATIC_WEDGE, "Wedge 15", wedge(15)),
        cell(VTK_QUADRATIC_PYRAMID, "Pyramid 13"),
        cell(VTK_BIQUADRATIC_QUAD, "Quadrangle 9"),
        cell(VTK_TRIQUADRATIC_HEXAHEDRON, "Hexahedron 27"),
        cell(VTK_TRIQUADRATIC_PYRAMID, "Pyramid 19"),
        cell(VTK_QUADRATIC_LINEAR_QUAD, "Quadratic linear quad"),
        cell(VTK_QUADRATIC_LINEAR_WEDGE, "Quadratic linear wedge", wedge(12)),
        cell(VTK_BIQUADRATIC_QUADRATIC_WEDGE, "Wedge 18", wedge(18)),
        cell(VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, "Hexahedron 24"),
        cell(VTK_BIQUADRATIC_TRIANGLE, "Triangle 7"),
        cell(VTK_CUBIC_LINE, "Line 4"),
        cellOf(VTK_LAGRANGE_CURVE, 2, "Line"),
        cellOf(VTK_LAGRANGE_CURVE, 3, "Line 3"),
        cellOf(VTK_LAGRANGE_CURVE, 4, "Line 4"),
        cellOf(VTK_LAGRANGE_TRIANGLE, 3, "Triangle"),
        cellOf(VTK_LAGRANGE_TRIANGLE, 6, "Triangle 6"),
        cellOf(VTK_LAGRANGE_TRIANGLE, 7, "Triangle 7"),
        cellOf(VTK_LAGRANGE_QUADRILATERAL, 4, "Quadrangle"),
        cellOf(VTK_LAGRANGE_QUADRILATERAL, 9, "Quadrangle 9"),
        cellOf(VTK_LAGRANGE_TETRAHEDRON, 4, "Tetrahedron"),
        cellOf(VTK_LAGRANGE_TETRAHEDRON, 10, "Tetrahedron 10"),
        cellOf(VTK_LAGRANGE_HEXAHEDRON, 8, "Hexahedron"),
        cellOf(VTK_LAGRANGE_HEXAHEDRON, 27, "Hexahedron 27"),
        cellOf(VTK_LAGRANGE_WEDGE, 6, "Wedge"),
        cellOf(VTK_LAGRANGE_WEDGE, 18, "Wedge 18"),
        cellOf(VTK_LAGRANGE_PYRAMID, 5, "Pyramid"),
        cellOf(VTK_BEZIER_CURVE, 2, "Line"),
        cellOf(VTK_BEZIER_TRIANGLE, 3, "Triangle"),
        cellOf(VTK_BEZIER_QUADRILATERAL, 4, "Quadrangle"),
        cellOf(VTK_BEZIER_TETRAHEDRON, 4, "Tetrahedron"),
        cellOf(VTK_BEZIER_HEXAHEDRON, 8, "Hexahedron"),
        cellOf(VTK_BEZIER_WEDGE, 6, "Wedge"),
        cellOf(VTK_BEZIER_PYRAMID, 5, "Pyramid"),
    };
    return types;
}

template <typename Condition>
CellType const* findIf(Condition const& condition)
{
    auto const found = std::find_if(allTypes().begin(), allTypes().end(), condition);
    return found == allTypes().end() ? nullptr : &*found;
}

} // namespace

CellType const* CellType::find(int number, std::size_t pointCount)
{
    return findIf([&](CellType const& type) {
        return type.number == number && (type.pointCount == any || type.pointCount == pointCount);
    });
}

CellType const* CellType::of(Exchange::ElementType const& element)
{
    return findIf([&](CellType const& type) { return type.element == &element; });
}

} // namespace Vtk
