#include "Exported.h"

#include <vtkCell.h>
#include <vtkCellType.h>
#include <vtkGenericCell.h>

#include <gtest/gtest.h>

#include <array>
#include <numeric>

namespace {

using namespace ExportTest;

struct Type
{
    unsigned int dimension;
    unsigned int nodes;
    int cellType;
    /// For each point of the cell, which node of the element it is; empty when the order is the
    /// same.
    std::vector<vtkIdType> order = {};
};

std::vector<Type> const& toldByCount()
{
    static std::vector<Type> const types = {
        {1, 1, VTK_VERTEX},
        {1, 2, VTK_LINE},
        {1, 3, VTK_QUADRATIC_EDGE},
        {1, 4, VTK_CUBIC_LINE},
        {2, 3, VTK_TRIANGLE},
        {2, 4, VTK_QUAD},
        {2, 6, VTK_QUADRATIC_TRIANGLE},
        {2, 7, VTK_BIQUADRATIC_TRIANGLE},
        {2, 8, VTK_QUADRATIC_QUAD},
        {2, 9, VTK_BIQUADRATIC_QUAD},
        {3, 4, VTK_TETRA},
        {3, 5, VTK_PYRAMID},
        {3, 6, VTK_WEDGE, {0, 2, 1, 3, 5, 4}},
        {3, 8, VTK_HEXAHEDRON},
        {3, 10, VTK_QUADRATIC_TETRA},
        {3, 13, VTK_QUADRATIC_PYRAMID},
        {3, 15, VTK_QUADRATIC_WEDGE, {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13}},
        {3,
         18,
         VTK_BIQUADRATIC_QUADRATIC_WEDGE,
         {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13, 17, 16, 15}},
        {3, 19, VTK_TRIQUADRATIC_PYRAMID},
        {3, 20, VTK_QUADRATIC_HEXAHEDRON},
        {3, 24, VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON},
        {3, 27, VTK_TRIQUADRATIC_HEXAHEDRON},
    };
    return types;
}

DatasetType connectivityOf(unsigned int dimension)
{
    return static_cast<DatasetType>(static_cast<unsigned int>(DatasetType::Connectivity1) +
                                    dimension - 1);
}

DatasetType polylengthOf(unsigned int dimension)
{
    return static_cast<DatasetType>(static_cast<unsigned int>(DatasetType::Polylength1) +
                                    dimension - 1);
}

/// Adds a shape with one element for each of `lengths`, which are their numbers of nodes. Nodes are
/// used in descending order, from the last one to the first.
void addElements(Model& model, unsigned int dimension, Numbers const& lengths, Floats const& nodes,
                 std::string const& elementType = "")
{
    unsigned int const shape = model.addNode(NodeType::Shape, "part");
    Numbers connectivity(std::accumulate(lengths.begin(), lengths.end(), 0U));
    std::iota(connectivity.rbegin(), connectivity.rend(), 0U);
    Attributes attributes;
    if (!elementType.empty())
        attributes.set("ElementType", elementType);
    model.addArrayProperty(DatasetType::Coordinates, rows(3, nodes), shape, Step());
    model.addArrayProperty(connectivityOf(dimension), Array1d<unsigned int>(connectivity), shape,
                           Step(), attributes);
    model.addArrayProperty(polylengthOf(dimension), Array1d<unsigned int>(lengths), shape, Step());
}

Floats someNodes(unsigned int count)
{
    Floats nodes(3 * std::size_t{count});
    for (std::size_t i = 0; i < nodes.size(); ++i)
        nodes[i] = 0.1F * static_cast<float>(i * i % 37);
    return nodes;
}

/// A model with elements of one shape.
ModelFile elements(unsigned int dimension, Numbers const& lengths,
                   std::string const& elementType = "")
{
    unsigned int const count = std::accumulate(lengths.begin(), lengths.end(), 0U);
    return ModelFile([&](Model& model) {
        model.addNode(NodeType::RootGroup, "root");
        addElements(model, dimension, lengths, someNodes(count), elementType);
    });
}

std::vector<vtkIdType> downFrom(vtkIdType count)
{
    std::vector<vtkIdType> ids(static_cast<std::size_t>(count));
    std::iota(ids.rbegin(), ids.rend(), 0);
    return ids;
}

/// The points that two cells have to have for two elements of the type, when these use their nodes
/// in descending order.
std::vector<vtkIdType> pointsOfTwo(Type const& type)
{
    std::vector<vtkIdType> points = downFrom(2 * static_cast<vtkIdType>(type.nodes));
    for (std::size_t i = 0; i < 2 * type.order.size(); ++i) {
        auto const place = static_cast<vtkIdType>(i % type.nodes);
        auto const firstOfElement = static_cast<vtkIdType>(i) - place;
        vtkIdType const node = type.order[static_cast<std::size_t>(place)];
        points[i] = 2 * static_cast<vtkIdType>(type.nodes) - 1 - firstOfElement - node;
    }
    return points;
}

TEST(Elements, DimensionAndNodesTellTheCell)
{
    for (Type const& type : toldByCount()) {
        SCOPED_TRACE(std::to_string(type.dimension) + ", " + std::to_string(type.nodes));
        auto const grid = exportedGrid(elements(type.dimension, {type.nodes, type.nodes}));
        EXPECT_EQ(ReadBack::cellTypes(*grid), (std::vector<int>{type.cellType, type.cellType}));
        EXPECT_EQ(ReadBack::connectivity(*grid), pointsOfTwo(type));
        EXPECT_EQ(ReadBack::points(*grid), someNodes(2 * type.nodes));
    }
}

TEST(Elements, ShapesMayMixTypesOfOneDimension)
{
    auto const grid = exportedGrid(elements(3, {8, 4, 20, 5, 10}));
    EXPECT_EQ(ReadBack::cellTypes(*grid),
              (std::vector<int>{VTK_HEXAHEDRON, VTK_TETRA, VTK_QUADRATIC_HEXAHEDRON, VTK_PYRAMID,
                                VTK_QUADRATIC_TETRA}));
    EXPECT_EQ(ReadBack::connectivity(*grid), downFrom(47));
}

TEST(Elements, TypesThatCountsDoNotTellAreNamed)
{
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(2, {3, 5}, "Polygon"))),
              (std::vector<int>{VTK_POLYGON, VTK_POLYGON}));
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(1, {7}, "Polyline"))),
              std::vector<int>{VTK_POLY_LINE});
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(1, {2}, "Polyvertex"))),
              std::vector<int>{VTK_POLY_VERTEX});
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(2, {6}, "Triangle strip"))),
              std::vector<int>{VTK_TRIANGLE_STRIP});
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(2, {6}, "Quadratic linear quad"))),
              std::vector<int>{VTK_QUADRATIC_LINEAR_QUAD});
    EXPECT_EQ(ReadBack::cellTypes(*exportedGrid(elements(3, {12}, "Quadratic linear wedge"))),
              std::vector<int>{VTK_QUADRATIC_LINEAR_WEDGE});
}

std::string complaint(unsigned int dimension, Numbers const& lengths,
                      std::string const& elementType = "")
{
    ModelFile const file = elements(dimension, lengths, elementType);
    try {
        exportedGrid(file);
    } catch (Export::Error const& error) {
        EXPECT_EQ(file.folder().names(), std::vector<std::string>{"model.mox"});
        return std::string(error.what()).substr(file.path().size() + 2);
    }
    return "";
}

TEST(Elements, AnUnknownTypeIsToldWithItsShape)
{
    EXPECT_EQ(complaint(3, {8, 11}),
              R"(Shape "part": There is no type of element of dimension 3 with 11 nodes.)");
    EXPECT_EQ(complaint(2, {1}),
              R"(Shape "part": There is no type of element of dimension 2 with 1 node.)");
    EXPECT_EQ(complaint(1, {3}, "Spiral"),
              R"(Shape "part": The type of element "Spiral" is unknown.)");
    EXPECT_EQ(complaint(3, {14}, "Pyramid 14"),
              R"(Shape "part": VTK has no cell for elements of the type "Pyramid 14".)");
    EXPECT_EQ(complaint(2, {5}, "Quadratic linear quad"),
              R"(Shape "part": A Quadratic linear quad can't have 5 nodes.)");
}

TEST(Elements, ConnectivityOutsideTheNodesIsRefused)
{
    EXPECT_EQ(complaintAbout([](Model& model) {
                  model.addNode(NodeType::RootGroup, "root");
                  addElements(model, 3, {4}, someNodes(3));
              }),
              R"(Shape "part": Its connectivity refers to node 3 of 3, counted from 0.)");
}

TEST(Elements, PolylengthThatDoesNotFitIsRefused)
{
    EXPECT_EQ(
        complaintAbout([](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            addElements(model, 2, {3}, triangleNodes());
            unsigned int const shape = model.getNodeId({"root", "part", "part"});
            model.addArrayProperty(DatasetType::Polylength2, Array1d<unsigned int>{4}, shape,
                                   Step());
        }),
        R"(Shape "part": Its elements have 4 nodes by its polylength, but 3 by its connectivity.)");
}

using Edge = std::pair<int, int>;

/// Corners of an element, and the edges in the order of the nodes on their middles.
struct SecondOrder
{
    unsigned int dimension;
    Floats corners;
    std::vector<Edge> edges;
};

Floats const bottomAndTop = {0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0,
                             0, 0, 3, 2, 0, 3, 2, 2, 3, 0, 2, 3};

// The order of nodes on edges is that of docs/model-layout.md.
std::vector<SecondOrder> const secondOrder = {
    {1, {0, 0, 0, 4, 0, 0}, {{1, 2}}},
    {2, {0, 0, 0, 2, 0, 0, 0, 2, 0}, {{1, 2}, {2, 3}, {3, 1}}},
    {2, {0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0}, {{1, 2}, {2, 3}, {3, 4}, {4, 1}}},
    {3, {0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0, 2}, {{1, 2}, {2, 3}, {3, 1}, {1, 4}, {2, 4}, {3, 4}}},
    {3,
     {0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0, 3, 2, 0, 3, 0, 2, 3},
     {{1, 2}, {2, 3}, {3, 1}, {4, 5}, {5, 6}, {6, 4}, {1, 4}, {2, 5}, {3, 6}}},
    {3,
     bottomAndTop,
     {{1, 2},
      {2, 3},
      {3, 4},
      {4, 1},
      {5, 6},
      {6, 7},
      {7, 8},
      {8, 5},
      {1, 5},
      {2, 6},
      {3, 7},
      {4, 8}}},
    {3,
     {0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0, 1, 1, 2},
     {{1, 2}, {2, 3}, {3, 4}, {4, 1}, {1, 5}, {2, 5}, {3, 5}, {4, 5}}},
};

Floats withMiddles(SecondOrder const& element)
{
    Floats nodes = element.corners;
    for (auto const& [first, second] : element.edges)
        for (std::size_t axis = 0; axis < 3; ++axis)
            nodes.push_back((element.corners[3 * static_cast<std::size_t>(first - 1) + axis] +
                             element.corners[3 * static_cast<std::size_t>(second - 1) + axis]) /
                            2);
    return nodes;
}

void addInOrder(Model& model, unsigned int dimension, Floats const& nodes)
{
    unsigned int const shape = model.addNode(NodeType::Shape, "part");
    auto const count = static_cast<unsigned int>(nodes.size() / 3);
    Numbers ids(count);
    std::iota(ids.begin(), ids.end(), 0U);
    model.addArrayProperty(DatasetType::Coordinates, rows(3, nodes), shape, Step());
    model.addArrayProperty(connectivityOf(dimension), Array1d<unsigned int>(ids), shape, Step());
    model.addArrayProperty(polylengthOf(dimension), Array1d<unsigned int>{count}, shape, Step());
}

std::array<double, 3> pointOf(vtkPoints& points, vtkIdType id)
{
    std::array<double, 3> point = {};
    points.GetPoint(id, point.data());
    return point;
}

void expectMiddlesOnEdges(vtkCell& cell)
{
    for (int i = 0; i < cell.GetNumberOfEdges(); ++i) {
        vtkPoints& points = *cell.GetEdge(i)->GetPoints();
        ASSERT_EQ(points.GetNumberOfPoints(), 3);
        auto const first = pointOf(points, 0);
        auto const last = pointOf(points, 1);
        auto const middle = pointOf(points, 2);
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_EQ(middle[axis], (first[axis] + last[axis]) / 2);
    }
}

TEST(Elements, VtkFindsTheMiddleNodesOfTheModelsOrderOnTheirEdges)
{
    for (SecondOrder const& element : secondOrder) {
        SCOPED_TRACE(element.edges.size());
        auto const grid = exportedGrid(ModelFile([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            addInOrder(model, element.dimension, withMiddles(element));
        }));
        ASSERT_EQ(grid->GetNumberOfCells(), 1);
        EXPECT_FALSE(grid->GetCell(0)->IsLinear());
        EXPECT_EQ(static_cast<std::size_t>(grid->GetCell(0)->GetNumberOfEdges()),
                  element.dimension == 1 ? 0 : element.edges.size());
        expectMiddlesOnEdges(*grid->GetCell(0));
    }
}

} // namespace
