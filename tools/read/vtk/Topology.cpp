#include "Topology.h"

#include <vtkCellType.h>

#include <map>
#include <utility>

namespace VtkRead {

namespace {

using Exchange::ElementType;

struct FixedCell
{
    char const* element;
    std::vector<std::size_t> order;
};

/// Cells that are elements whatever number of points they have.
std::map<int, FixedCell> const& fixedCells()
{
    static std::map<int, FixedCell> const cells = {
        {VTK_VERTEX, {"Point", {}}},
        {VTK_POLY_VERTEX, {"Polyvertex", {}}},
        {VTK_LINE, {"Line", {}}},
        {VTK_POLY_LINE, {"Polyline", {}}},
        {VTK_TRIANGLE, {"Triangle", {}}},
        {VTK_TRIANGLE_STRIP, {"Triangle strip", {}}},
        {VTK_POLYGON, {"Polygon", {}}},
        {VTK_PIXEL, {"Quadrangle", {0, 1, 3, 2}}},
        {VTK_QUAD, {"Quadrangle", {}}},
        {VTK_TETRA, {"Tetrahedron", {}}},
        {VTK_VOXEL, {"Hexahedron", {0, 1, 3, 2, 4, 5, 7, 6}}},
        {VTK_HEXAHEDRON, {"Hexahedron", {}}},
        {VTK_WEDGE, {"Wedge", {}}},
        {VTK_PYRAMID, {"Pyramid", {}}},
        {VTK_PENTAGONAL_PRISM, {"Pentagonal prism", {}}},
        {VTK_HEXAGONAL_PRISM, {"Hexagonal prism", {}}},
        {VTK_QUADRATIC_EDGE, {"Line 3", {}}},
        {VTK_QUADRATIC_TRIANGLE, {"Triangle 6", {}}},
        {VTK_QUADRATIC_QUAD, {"Quadrangle 8", {}}},
        {VTK_QUADRATIC_POLYGON, {"Quadratic polygon", {}}},
        {VTK_QUADRATIC_TETRA, {"Tetrahedron 10", {}}},
        {VTK_QUADRATIC_HEXAHEDRON, {"Hexahedron 20", {}}},
        {VTK_QUADRATIC_WEDGE, {"Wedge 15", {}}},
        {VTK_QUADRATIC_PYRAMID, {"Pyramid 13", {}}},
        {VTK_BIQUADRATIC_QUAD, {"Quadrangle 9", {}}},
        {VTK_TRIQUADRATIC_HEXAHEDRON, {"Hexahedron 27", {}}},
        {VTK_TRIQUADRATIC_PYRAMID, {"Pyramid 19", {}}},
        {VTK_QUADRATIC_LINEAR_QUAD, {"Quadratic linear quad", {}}},
        {VTK_QUADRATIC_LINEAR_WEDGE, {"Quadratic linear wedge", {}}},
        {VTK_BIQUADRATIC_QUADRATIC_WEDGE, {"Wedge 18", {}}},
        {VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, {"Hexahedron 24", {}}},
        {VTK_BIQUADRATIC_TRIANGLE, {"Triangle 7", {}}},
        {VTK_CUBIC_LINE, {"Line 4", {}}},
    };
    return cells;
}

using CountedCell = std::pair<int, std::size_t>;

/// Cells that are elements with certain numbers of points.
std::map<CountedCell, char const*> const& countedCells()
{
    static std::map<CountedCell, char const*> const cells = {
        {{VTK_LAGRANGE_CURVE, 2}, "Line"},
        {{VTK_LAGRANGE_CURVE, 3}, "Line 3"},
        {{VTK_LAGRANGE_CURVE, 4}, "Line 4"},
        {{VTK_LAGRANGE_TRIANGLE, 3}, "Triangle"},
        {{VTK_LAGRANGE_TRIANGLE, 6}, "Triangle 6"},
        {{VTK_LAGRANGE_TRIANGLE, 7}, "Triangle 7"},
        {{VTK_LAGRANGE_QUADRILATERAL, 4}, "Quadrangle"},
        {{VTK_LAGRANGE_QUADRILATERAL, 9}, "Quadrangle 9"},
        {{VTK_LAGRANGE_TETRAHEDRON, 4}, "Tetrahedron"},
        {{VTK_LAGRANGE_TETRAHEDRON, 10}, "Tetrahedron 10"},
        {{VTK_LAGRANGE_HEXAHEDRON, 8}, "Hexahedron"},
        {{VTK_LAGRANGE_HEXAHEDRON, 27}, "Hexahedron 27"},
        {{VTK_LAGRANGE_WEDGE, 6}, "Wedge"},
        {{VTK_LAGRANGE_WEDGE, 18}, "Wedge 18"},
        {{VTK_LAGRANGE_PYRAMID, 5}, "Pyramid"},
        {{VTK_BEZIER_CURVE, 2}, "Line"},
        {{VTK_BEZIER_TRIANGLE, 3}, "Triangle"},
        {{VTK_BEZIER_QUADRILATERAL, 4}, "Quadrangle"},
        {{VTK_BEZIER_TETRAHEDRON, 4}, "Tetrahedron"},
        {{VTK_BEZIER_HEXAHEDRON, 8}, "Hexahedron"},
        {{VTK_BEZIER_WEDGE, 6}, "Wedge"},
        {{VTK_BEZIER_PYRAMID, 5}, "Pyramid"},
    };
    return cells;
}

std::map<int, char const*> const& otherNames()
{
    static std::map<int, char const*> const names = {
        {VTK_EMPTY_CELL, "empty cell"},
        {VTK_CONVEX_POINT_SET, "convex point set"},
        {VTK_POLYHEDRON, "polyhedron"},
        {VTK_PARAMETRIC_CURVE, "parametric curve"},
        {VTK_PARAMETRIC_SURFACE, "parametric surface"},
        {VTK_PARAMETRIC_TRI_SURFACE, "parametric triangular surface"},
        {VTK_PARAMETRIC_QUAD_SURFACE, "parametric quadrilateral surface"},
        {VTK_PARAMETRIC_TETRA_REGION, "parametric tetrahedral region"},
        {VTK_PARAMETRIC_HEX_REGION, "parametric hexahedral region"},
        {VTK_HIGHER_ORDER_EDGE, "higher order edge"},
        {VTK_HIGHER_ORDER_TRIANGLE, "higher order triangle"},
        {VTK_HIGHER_ORDER_QUAD, "higher order quadrilateral"},
        {VTK_HIGHER_ORDER_POLYGON, "higher order polygon"},
        {VTK_HIGHER_ORDER_TETRAHEDRON, "higher order tetrahedron"},
        {VTK_HIGHER_ORDER_WEDGE, "higher order wedge"},
        {VTK_HIGHER_ORDER_PYRAMID, "higher order pyramid"},
        {VTK_HIGHER_ORDER_HEXAHEDRON, "higher order hexahedron"},
        {VTK_LAGRANGE_CURVE, "Lagrange curve"},
        {VTK_LAGRANGE_TRIANGLE, "Lagrange triangle"},
        {VTK_LAGRANGE_QUADRILATERAL, "Lagrange quadrilateral"},
        {VTK_LAGRANGE_TETRAHEDRON, "Lagrange tetrahedron"},
        {VTK_LAGRANGE_HEXAHEDRON, "Lagrange hexahedron"},
        {VTK_LAGRANGE_WEDGE, "Lagrange wedge"},
        {VTK_LAGRANGE_PYRAMID, "Lagrange pyramid"},
        {VTK_BEZIER_CURVE, "Bezier curve"},
        {VTK_BEZIER_TRIANGLE, "Bezier triangle"},
        {VTK_BEZIER_QUADRILATERAL, "Bezier quadrilateral"},
        {VTK_BEZIER_TETRAHEDRON, "Bezier tetrahedron"},
        {VTK_BEZIER_HEXAHEDRON, "Bezier hexahedron"},
        {VTK_BEZIER_WEDGE, "Bezier wedge"},
        {VTK_BEZIER_PYRAMID, "Bezier pyramid"},
    };
    return names;
}

} // namespace

Topology topologyOf(int cellType, std::size_t pointCount)
{
    auto const fixed = fixedCells().find(cellType);
    if (fixed != fixedCells().end())
        return {ElementType::find(fixed->second.element), fixed->second.order};
    auto const counted = countedCells().find({cellType, pointCount});
    if (counted != countedCells().end())
        return {ElementType::find(counted->second), {}};
    return {};
}

std::string cellTypeName(int cellType, std::size_t pointCount)
{
    auto const fixed = fixedCells().find(cellType);
    if (fixed != fixedCells().end())
        return fixed->second.element;
    auto const found = otherNames().find(cellType);
    if (found == otherNames().end())
        return "number " + std::to_string(cellType);
    bool const hasOrder = cellType >= VTK_LAGRANGE_CURVE;
    return hasOrder ? found->second + (" with " + std::to_string(pointCount) + " points")
                    : found->second;
}

} // namespace VtkRead
