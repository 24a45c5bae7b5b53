// Gmsh itself tells where the nodes of its elements are: in the order of a model, each must be in
// the middle of the corners that the order says.

#include "GmshFile.h"

#include <read/gmsh/Topology.h>

#include <gmsh.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

using Corners = std::vector<std::size_t>;
using Middles = std::vector<Corners>;

Middles const hexEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                          {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
Middles const wedgeEdges = {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}};
Middles const pyramidEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}};
Middles const quadEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};

Middles operator+(Middles const& a, Middles const& b)
{
    Middles all = a;
    all.insert(all.end(), b.begin(), b.end());
    return all;
}

/// For each type of a model, where the nodes after the corners are.
std::map<std::string, Middles> const& middles()
{
    static std::map<std::string, Middles> const all = {
        {"Point", {}},
        {"Line", {}},
        {"Triangle", {}},
        {"Quadrangle", {}},
        {"Tetrahedron", {}},
        {"Hexahedron", {}},
        {"Wedge", {}},
        {"Pyramid", {}},
        {"Line 3", {{0, 1}}},
        {"Triangle 6", {{0, 1}, {1, 2}, {2, 0}}},
        {"Quadrangle 8", quadEdges},
        {"Quadrangle 9", quadEdges + Middles{{0, 1, 2, 3}}},
        {"Tetrahedron 10", {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}}},
        {"Hexahedron 20", hexEdges},
        {"Hexahedron 27", hexEdges + Middles{{0, 3, 4, 7},
                                             {1, 2, 5, 6},
                                             {0, 1, 4, 5},
                                             {2, 3, 6, 7},
                                             {0, 1, 2, 3},
                                             {4, 5, 6, 7},
                                             {0, 1, 2, 3, 4, 5, 6, 7}}},
        {"Wedge 15", wedgeEdges},
        {"Wedge 18", wedgeEdges + Middles{{0, 1, 3, 4}, {1, 2, 4, 5}, {0, 2, 3, 5}}},
        {"Pyramid 13", pyramidEdges},
        {"Pyramid 14", pyramidEdges + Middles{{0, 1, 2, 3}}},
    };
    return all;
}

struct Element
{
    std::string name;
    int dimension = 0;
    std::size_t nodeCount = 0;
    std::size_t cornerCount = 0;
    std::vector<double> coordinates;

    explicit Element(int type)
    {
        int order = 0;
        int nodes = 0;
        int corners = 0;
        gmsh::model::mesh::getElementProperties(type, name, dimension, order, nodes, coordinates,
                                                corners);
        nodeCount = static_cast<std::size_t>(nodes);
        cornerCount = static_cast<std::size_t>(corners);
    }

    std::vector<double> at(std::size_t node) const
    {
        auto const size = static_cast<std::size_t>(dimension);
        auto const first = coordinates.begin() + static_cast<std::ptrdiff_t>(node * size);
        return {first, first + dimension};
    }

    std::vector<double> middleOf(Corners const& corners,
                                 std::vector<std::size_t> const& order) const
    {
        std::vector<double> middle(static_cast<std::size_t>(dimension));
        for (std::size_t const corner : corners)
            for (std::size_t axis = 0; axis < middle.size(); ++axis)
                middle[axis] += at(order[corner])[axis] / static_cast<double>(corners.size());
        return middle;
    }
};

std::vector<std::size_t> orderOf(Gmsh::Topology const& topology, std::size_t count)
{
    if (!topology.order.empty())
        return topology.order;
    std::vector<std::size_t> order(count);
    for (std::size_t i = 0; i < count; ++i)
        order[i] = i;
    return order;
}

TEST(GmshTopology, EachNodeIsWhereTheModelsOrderSays)
{
    GmshTest::Library const library;
    int checked = 0;
    for (int type = 1; type <= 19; ++type) {
        Element const element(type);
        Gmsh::Topology const topology = Gmsh::topologyOf(type);
        ASSERT_NE(topology.type, nullptr) << element.name;
        ASSERT_EQ(topology.type->nodeCount, element.nodeCount) << element.name;
        EXPECT_EQ(topology.type->dimension, std::max(element.dimension, 1)) << element.name;
        auto const order = orderOf(topology, element.nodeCount);
        Middles const& expected = middles().at(topology.type->name);
        ASSERT_EQ(element.cornerCount + expected.size(), element.nodeCount) << element.name;
        for (std::size_t corner = 0; corner < element.cornerCount; ++corner)
            EXPECT_EQ(order[corner], corner) << element.name;
        for (std::size_t i = 0; i < expected.size(); ++i, ++checked) {
            std::size_t const node = order[element.cornerCount + i];
            EXPECT_GE(node, element.cornerCount) << element.name;
            EXPECT_EQ(element.at(node), element.middleOf(expected[i], order))
                << element.name << " node " << element.cornerCount + i;
        }
    }
    EXPECT_EQ(checked, 88);
}

TEST(GmshTopology, NodesOfCubicLinesGoFromTheFirstEndToTheLast)
{
    GmshTest::Library const library;
    Element const element(26);
    Gmsh::Topology const topology = Gmsh::topologyOf(26);
    ASSERT_NE(topology.type, nullptr);
    EXPECT_EQ(topology.type->name, "Line 4");
    auto const order = orderOf(topology, 4);
    EXPECT_LT(element.at(order[0])[0], element.at(order[2])[0]);
    EXPECT_LT(element.at(order[2])[0], element.at(order[3])[0]);
    EXPECT_LT(element.at(order[3])[0], element.at(order[1])[0]);
}

TEST(GmshTopology, WhatAModelCannotHoldHasNoType)
{
    for (int const type : {-1, 0, 20, 21, 25, 27, 29, 34, 35, 36, 92, 118, 132, 140, 1000})
        EXPECT_EQ(Gmsh::topologyOf(type).type, nullptr) << type;
}

} // namespace
