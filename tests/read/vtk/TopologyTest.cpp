#include <read/vtk/Topology.h>

#include <vtkCell.h>
#include <vtkCellType.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Exchange::ElementType;
using VtkRead::cellTypeName;
using VtkRead::Topology;
using VtkRead::topologyOf;

/// A number of points where cells of the type may have any.
constexpr std::size_t some = 7;

struct Expected
{
    int cell;
    std::size_t points;
    char const* element;
};

std::vector<Expected> const carried = {
    {VTK_VERTEX, 1, "Point"},
    {VTK_POLY_VERTEX, some, "Polyvertex"},
    {VTK_LINE, 2, "Line"},
    {VTK_POLY_LINE, some, "Polyline"},
    {VTK_TRIANGLE, 3, "Triangle"},
    {VTK_TRIANGLE_STRIP, some, "Triangle strip"},
    {VTK_POLYGON, some, "Polygon"},
    {VTK_PIXEL, 4, "Quadrangle"},
    {VTK_QUAD, 4, "Quadrangle"},
    {VTK_TETRA, 4, "Tetrahedron"},
    {VTK_VOXEL, 8, "Hexahedron"},
    {VTK_HEXAHEDRON, 8, "Hexahedron"},
    {VTK_WEDGE, 6, "Wedge"},
    {VTK_PYRAMID, 5, "Pyramid"},
    {VTK_PENTAGONAL_PRISM, 10, "Pentagonal prism"},
    {VTK_HEXAGONAL_PRISM, 12, "Hexagonal prism"},
    {VTK_QUADRATIC_EDGE, 3, "Line 3"},
    {VTK_QUADRATIC_TRIANGLE, 6, "Triangle 6"},
    {VTK_QUADRATIC_QUAD, 8, "Quadrangle 8"},
    {VTK_QUADRATIC_TETRA, 10, "Tetrahedron 10"},
    {VTK_QUADRATIC_HEXAHEDRON, 20, "Hexahedron 20"},
    {VTK_QUADRATIC_WEDGE, 15, "Wedge 15"},
    {VTK_QUADRATIC_PYRAMID, 13, "Pyramid 13"},
    {VTK_BIQUADRATIC_QUAD, 9, "Quadrangle 9"},
    {VTK_TRIQUADRATIC_HEXAHEDRON, 27, "Hexahedron 27"},
    {VTK_QUADRATIC_LINEAR_QUAD, 6, "Quadratic linear quad"},
    {VTK_QUADRATIC_LINEAR_WEDGE, 12, "Quadratic linear wedge"},
    {VTK_BIQUADRATIC_QUADRATIC_WEDGE, 18, "Wedge 18"},
    {VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, 24, "Hexahedron 24"},
    {VTK_BIQUADRATIC_TRIANGLE, 7, "Triangle 7"},
    {VTK_CUBIC_LINE, 4, "Line 4"},
    {VTK_QUADRATIC_POLYGON, some, "Quadratic polygon"},
    {VTK_TRIQUADRATIC_PYRAMID, 19, "Pyramid 19"},
};

std::vector<Expected> const carriedOfSomeOrders = {
    {VTK_LAGRANGE_CURVE, 2, "Line"},
    {VTK_LAGRANGE_CURVE, 3, "Line 3"},
    {VTK_LAGRANGE_CURVE, 4, "Line 4"},
    {VTK_LAGRANGE_TRIANGLE, 3, "Triangle"},
    {VTK_LAGRANGE_TRIANGLE, 6, "Triangle 6"},
    {VTK_LAGRANGE_TRIANGLE, 7, "Triangle 7"},
    {VTK_LAGRANGE_QUADRILATERAL, 4, "Quadrangle"},
    {VTK_LAGRANGE_QUADRILATERAL, 9, "Quadrangle 9"},
    {VTK_LAGRANGE_TETRAHEDRON, 4, "Tetrahedron"},
    {VTK_LAGRANGE_TETRAHEDRON, 10, "Tetrahedron 10"},
    {VTK_LAGRANGE_HEXAHEDRON, 8, "Hexahedron"},
    {VTK_LAGRANGE_HEXAHEDRON, 27, "Hexahedron 27"},
    {VTK_LAGRANGE_WEDGE, 6, "Wedge"},
    {VTK_LAGRANGE_WEDGE, 18, "Wedge 18"},
    {VTK_LAGRANGE_PYRAMID, 5, "Pyramid"},
    {VTK_BEZIER_CURVE, 2, "Line"},
    {VTK_BEZIER_TRIANGLE, 3, "Triangle"},
    {VTK_BEZIER_QUADRILATERAL, 4, "Quadrangle"},
    {VTK_BEZIER_TETRAHEDRON, 4, "Tetrahedron"},
    {VTK_BEZIER_HEXAHEDRON, 8, "Hexahedron"},
    {VTK_BEZIER_WEDGE, 6, "Wedge"},
    {VTK_BEZIER_PYRAMID, 5, "Pyramid"},
};

std::map<int, std::string> const refused = {
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
};

std::set<int> const unassigned = {17, 18, 19, 20, 38, 39, 40, 43, 44,
                                  45, 46, 47, 48, 49, 50, 57, 58, 59};

TEST(Topology, EveryTypeIsCarriedOrRefused)
{
    std::set<int> known = unassigned;
    for (Expected const& expected : carried)
        known.insert(expected.cell);
    for (Expected const& expected : carriedOfSomeOrders)
        known.insert(expected.cell);
    for (auto const& entry : refused)
        known.insert(entry.first);
    for (int cell = 0; cell < VTK_NUMBER_OF_CELL_TYPES; ++cell)
        EXPECT_EQ(known.count(cell), 1U) << cell;
    EXPECT_EQ(known.size(), std::size_t(VTK_NUMBER_OF_CELL_TYPES));
}

TEST(Topology, EachThatIsCarriedBecomesItsElement)
{
    for (auto const* const table : {&carried, &carriedOfSomeOrders})
        for (Expected const& expected : *table) {
            Topology const mapped = topologyOf(expected.cell, expected.points);
            ASSERT_NE(mapped.type, nullptr) << expected.cell;
            EXPECT_EQ(mapped.type->name, expected.element);
            EXPECT_TRUE(mapped.type->nodeCount == 0 || mapped.type->nodeCount == expected.points)
                << expected.element;
        }
}

TEST(Topology, EachThatIsRefusedHasAName)
{
    for (auto const& [cell, name] : refused) {
        EXPECT_EQ(topologyOf(cell, 8).type, nullptr) << name;
        EXPECT_EQ(cellTypeName(cell, 8), name);
    }
    for (int const cell : unassigned) {
        EXPECT_EQ(topologyOf(cell, 4).type, nullptr) << cell;
        EXPECT_EQ(cellTypeName(cell, 4), "number " + std::to_string(cell));
    }
}

TEST(Topology, OtherOrdersAreRefusedWithTheirNumberOfPoints)
{
    EXPECT_EQ(topologyOf(VTK_LAGRANGE_HEXAHEDRON, 64).type, nullptr);
    EXPECT_EQ(cellTypeName(VTK_LAGRANGE_HEXAHEDRON, 64), "Lagrange hexahedron with 64 points");
    EXPECT_EQ(topologyOf(VTK_BEZIER_TRIANGLE, 6).type, nullptr);
    EXPECT_EQ(cellTypeName(VTK_BEZIER_TRIANGLE, 6), "Bezier triangle with 6 points");
    EXPECT_EQ(topologyOf(VTK_LAGRANGE_TETRAHEDRON, 15).type, nullptr);
}

using Point = std::array<double, 3>;

/// Where a cell has its points in its own coordinates, of which VTK knows two kinds: from 0 to 1,
/// and from -1 to 1.
std::vector<Point> places(vtkCell& cell)
{
    double const* const coordinates = cell.GetParametricCoords();
    std::vector<Point> points;
    for (vtkIdType i = 0; i < cell.GetNumberOfPoints(); ++i)
        points.push_back({coordinates[3 * i], coordinates[3 * i + 1], coordinates[3 * i + 2]});
    return points;
}

/// A cell in a grid, which is where cells of any order learn their order.
std::vector<Point> placesInGrid(int type, std::size_t count)
{
    vtkNew<vtkUnstructuredGrid> grid;
    vtkNew<vtkPoints> points;
    std::vector<vtkIdType> ids;
    for (std::size_t i = 0; i < count; ++i)
        ids.push_back(points->InsertNextPoint(static_cast<double>(i), 0, 0));
    grid->SetPoints(points);
    grid->InsertNextCell(type, static_cast<vtkIdType>(count), ids.data());
    return places(*grid->GetCell(0));
}

/// The cell that stands for an element in VTK.
int plainCell(std::string const& element)
{
    for (Expected const& expected : carried)
        if (expected.element == element && expected.cell != VTK_PIXEL && expected.cell != VTK_VOXEL)
            return expected.cell;
    return VTK_EMPTY_CELL;
}

void expectSamePlaces(std::vector<Point> const& cell, std::vector<std::size_t> const& order,
                      std::vector<Point> const& element, std::string const& name)
{
    ASSERT_EQ(cell.size(), element.size()) << name;
    for (std::size_t i = 0; i < cell.size(); ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(cell[order.empty() ? i : order[i]][axis], element[i][axis], 1e-12)
                << name << " point " << i;
}

TEST(Topology, NodesOfCellsOfAnyOrderAreWhereTheElementHasThem)
{
    for (Expected const& expected : carriedOfSomeOrders) {
        // These have no coordinates of their own in VTK, or others than the plain cell.
        if (expected.cell == VTK_LAGRANGE_PYRAMID || expected.cell == VTK_BEZIER_PYRAMID ||
            std::string(expected.element) == "Line 4")
            continue;
        expectSamePlaces(placesInGrid(expected.cell, expected.points),
                         topologyOf(expected.cell, expected.points).order,
                         placesInGrid(plainCell(expected.element), expected.points),
                         expected.element);
    }
}

TEST(Topology, PixelsAndVoxelsAreTurnedIntoTheOrderAround)
{
    expectSamePlaces(placesInGrid(VTK_PIXEL, 4), topologyOf(VTK_PIXEL, 4).order,
                     placesInGrid(VTK_QUAD, 4), "pixel");
    expectSamePlaces(placesInGrid(VTK_VOXEL, 8), topologyOf(VTK_VOXEL, 8).order,
                     placesInGrid(VTK_HEXAHEDRON, 8), "voxel");
}

} // namespace
