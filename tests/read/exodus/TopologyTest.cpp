#include <read/exodus/Topology.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace {

using Corners = std::set<std::size_t>;
/// For each node of an element, in one of the orders, the corners in whose middle it is.
using Middles = std::vector<Corners>;

Middles corners(std::size_t count)
{
    Middles middles;
    for (std::size_t i = 0; i < count; ++i)
        middles.push_back({i});
    return middles;
}

Middles operator+(Middles const& a, Middles const& b)
{
    Middles all = a;
    all.insert(all.end(), b.begin(), b.end());
    return all;
}

Corners allOf(std::size_t count)
{
    Corners all;
    for (std::size_t i = 0; i < count; ++i)
        all.insert(i);
    return all;
}

Middles const hexBottom = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
Middles const hexTop = {{4, 5}, {5, 6}, {6, 7}, {7, 4}};
Middles const hexUpright = {{0, 4}, {1, 5}, {2, 6}, {3, 7}};
Middles const wedgeBottom = {{0, 1}, {1, 2}, {2, 0}};
Middles const wedgeTop = {{3, 4}, {4, 5}, {5, 3}};
Middles const wedgeUpright = {{0, 3}, {1, 4}, {2, 5}};
Middles const wedgeTriangles = {{0, 1, 2}, {3, 4, 5}};
Middles const wedgeQuads = {{0, 1, 3, 4}, {1, 2, 4, 5}, {0, 2, 3, 5}};
Middles const tetEdges = {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
Middles const fileTetFaces = {{0, 1, 2}, {1, 2, 3}, {0, 2, 3}, {0, 1, 3}};
Middles const modelTetFaces = {{0, 1, 2}, {0, 1, 3}, {1, 2, 3}, {0, 2, 3}};
Middles const pyramidEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}};
Middles const pyramidFaces = {{0, 1, 2, 3}, {0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {0, 3, 4}};
Middles const quadEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};

struct Order
{
    char const* type;
    Middles inFile;
    Middles inModel;
};

std::vector<Order> orders()
{
    Middles const hexFile = corners(8) + hexBottom + hexUpright + hexTop;
    Middles const hexModel = corners(8) + hexBottom + hexTop + hexUpright;
    Middles const wedgeFile = corners(6) + wedgeBottom + wedgeUpright + wedgeTop;
    Middles const wedgeModel = corners(6) + wedgeBottom + wedgeTop + wedgeUpright;
    Middles const fileHexFaces = {{0, 1, 2, 3}, {4, 5, 6, 7}, {0, 3, 4, 7},
                                  {1, 2, 5, 6}, {0, 1, 4, 5}, {2, 3, 6, 7}};
    Middles const modelHexFaces = {{0, 3, 4, 7}, {1, 2, 5, 6}, {0, 1, 4, 5},
                                   {2, 3, 6, 7}, {0, 1, 2, 3}, {4, 5, 6, 7}};
    return {
        {"HEX", hexFile, hexModel},
        {"HEX", hexFile + Middles{allOf(8)} + fileHexFaces,
         hexModel + modelHexFaces + Middles{allOf(8)}},
        {"WEDGE", wedgeFile, wedgeModel},
        {"WEDGE", wedgeFile + wedgeQuads, wedgeModel + wedgeQuads},
        {"WEDGE",
         wedgeFile + Middles{allOf(6)} + wedgeTriangles +
             Middles{{1, 2, 4, 5}, {0, 2, 3, 5}, {0, 1, 3, 4}},
         wedgeModel + wedgeTriangles + wedgeQuads + Middles{allOf(6)}},
        {"TETRA", corners(4) + tetEdges, corners(4) + tetEdges},
        {"TETRA", corners(4) + tetEdges + fileTetFaces, corners(4) + tetEdges + modelTetFaces},
        {"TETRA", corners(4) + tetEdges + Middles{allOf(4)} + fileTetFaces,
         corners(4) + tetEdges + modelTetFaces + Middles{allOf(4)}},
        {"PYRAMID", corners(5) + pyramidEdges, corners(5) + pyramidEdges},
        {"PYRAMID", corners(5) + pyramidEdges + Middles{{0, 1, 2, 3}},
         corners(5) + pyramidEdges + Middles{{0, 1, 2, 3}}},
        {"PYRAMID", corners(5) + pyramidEdges + pyramidFaces + Middles{allOf(5)},
         corners(5) + pyramidEdges + pyramidFaces + Middles{allOf(5)}},
        {"QUAD", corners(4) + quadEdges + Middles{allOf(4)},
         corners(4) + quadEdges + Middles{allOf(4)}},
    };
}

std::string typeOf(std::string const& name, std::int64_t nodes, std::int64_t dimension = 3)
{
    auto const topology = Exodus::topologyOf(name, nodes, dimension);
    return topology.type ? topology.type->name : "";
}

TEST(Topology, EachNodeIsInTheMiddleOfTheCornersThatTheModelsOrderSays)
{
    for (Order const& order : orders()) {
        std::string const what = order.type + std::to_string(order.inFile.size());
        auto const topology =
            Exodus::topologyOf(order.type, static_cast<std::int64_t>(order.inFile.size()), 3);
        ASSERT_NE(topology.type, nullptr) << what;
        for (std::size_t i = 0; i < order.inModel.size(); ++i) {
            std::size_t const place = topology.order.empty() ? i : topology.order.at(i);
            EXPECT_EQ(order.inFile.at(place), order.inModel[i]) << what << " node " << i;
        }
    }
}

TEST(Topology, EveryOrderHasEachNodeOnce)
{
    int checked = 0;
    for (char const* const name :
         {"SPHERE", "BAR", "TRI", "QUAD", "SHELL", "TETRA", "PYRAMID", "WEDGE", "HEX"})
        for (std::int64_t nodes = 1; nodes <= 30; ++nodes) {
            auto const topology = Exodus::topologyOf(name, nodes, 3);
            if (topology.order.empty())
                continue;
            std::vector<std::size_t> sorted = topology.order;
            std::sort(sorted.begin(), sorted.end());
            std::vector<std::size_t> expected(static_cast<std::size_t>(nodes));
            std::iota(expected.begin(), expected.end(), std::size_t(0));
            EXPECT_EQ(sorted, expected) << name << nodes;
            ++checked;
        }
    EXPECT_EQ(checked, 7);
}

TEST(Topology, FirstLettersInEitherCaseTellTheKind)
{
    for (char const* const name : {"HEX", "hex", "Hex8", "HEX20", "hexahedron"})
        EXPECT_EQ(typeOf(name, 8), "Hexahedron") << name;
    for (char const* const name : {"TETRA", "tet", "tetra10", "TETRAHEDRON"})
        EXPECT_EQ(typeOf(name, 10), "Tetrahedron 10") << name;
    for (char const* const name : {"TRI", "TRISHELL", "triangle", "tri3"})
        EXPECT_EQ(typeOf(name, 3), "Triangle") << name;
    for (char const* const name : {"BAR", "beam", "TRUSS", "Rod", "EDGE2", "line"})
        EXPECT_EQ(typeOf(name, 2), "Line") << name;
    for (char const* const name : {"SPHERE", "circle", "SPHERE-MASS", "point"})
        EXPECT_EQ(typeOf(name, 1), "Point") << name;
}

TEST(Topology, NumberOfNodesTellsTheOrderOfTheElement)
{
    EXPECT_EQ(typeOf("BAR", 3), "Line 3");
    EXPECT_EQ(typeOf("BEAM", 4), "Line 4");
    EXPECT_EQ(typeOf("TRI", 6), "Triangle 6");
    EXPECT_EQ(typeOf("TRI", 7), "Triangle 7");
    EXPECT_EQ(typeOf("QUAD", 4), "Quadrangle");
    EXPECT_EQ(typeOf("SHELL", 4), "Quadrangle");
    EXPECT_EQ(typeOf("SHELL", 8), "Quadrangle 8");
    EXPECT_EQ(typeOf("SHELL", 9), "Quadrangle 9");
    EXPECT_EQ(typeOf("TETRA", 4), "Tetrahedron");
    EXPECT_EQ(typeOf("PYRAMID", 5), "Pyramid");
    EXPECT_EQ(typeOf("WEDGE", 6), "Wedge");
    EXPECT_EQ(typeOf("WEDGE", 12), "Quadratic linear wedge");
    EXPECT_EQ(typeOf("HEXSHELL", 8), "Hexahedron");
}

TEST(Topology, ShellsInThePlaneAreLines)
{
    EXPECT_EQ(typeOf("SHELL", 2, 2), "Line");
    EXPECT_EQ(typeOf("SHELL", 3, 2), "Line 3");
    EXPECT_EQ(typeOf("SHELL", 3, 3), "Triangle");
    EXPECT_EQ(typeOf("SHELL", 4, 3), "Quadrangle");
}

TEST(Topology, WhatAModelCannotHoldHasNoType)
{
    std::multimap<std::string, std::int64_t> const unknown = {
        {"TRI", 4},    {"QUAD", 5}, {"TETRA", 8},  {"TETRA", 11}, {"PYRAMID", 18}, {"WEDGE", 16},
        {"WEDGE", 20}, {"HEX", 9},  {"HEX", 12},   {"HEX", 21},   {"HEXSHELL", 9}, {"SUPER", 8},
        {"NFACED", 0}, {"", 4},     {"SPHERE", 2}, {"HEX", 0},    {"HE", 8},       {"Q", 4}};
    for (auto const& [name, nodes] : unknown)
        EXPECT_EQ(typeOf(name, nodes), "") << name << nodes;
}

TEST(Topology, ListsOfNodesAndFacesAreToldByTheirNames)
{
    EXPECT_TRUE(Exodus::isPolygon("nsided"));
    EXPECT_TRUE(Exodus::isPolygon("NSIDED"));
    EXPECT_FALSE(Exodus::isPolygon("NFACED"));
    EXPECT_TRUE(Exodus::isPolyhedron("nfaced"));
    EXPECT_FALSE(Exodus::isPolyhedron("HEX"));
}

} // namespace
