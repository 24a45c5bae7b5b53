#include "Topology.h"

#include <vtk/CellType.h>

#include <vtkCellType.h>

#include <map>

namespace VtkRead {

namespace {

/// Cells that no element is for, or none with certain numbers of points.
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
    Vtk::CellType const* const found = Vtk::CellType::find(cellType, pointCount);
    return found == nullptr ? Topology() : Topology{found->element, found->order};
}

std::string cellTypeName(int cellType, std::size_t pointCount)
{
    auto const found = otherNames().find(cellType);
    if (found != otherNames().end()) {
        bool const hasOrder = cellType >= VTK_LAGRANGE_CURVE;
        return hasOrder ? found->second + (" with " + std::to_string(pointCount) + " points")
                        : found->second;
    }
    Vtk::CellType const* const known = Vtk::CellType::find(cellType, pointCount);
    return known == nullptr ? "number " + std::to_string(cellType) : known->element->name;
}

} // namespace VtkRead
