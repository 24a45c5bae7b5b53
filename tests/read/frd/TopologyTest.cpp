#include "TestFiles.h"

#include <read/frd/Reader.h>
#include <read/frd/Topology.h>

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace {

using Frd::Topology;
using Order = std::vector<std::size_t>;
using Edges = std::vector<std::pair<std::size_t, std::size_t>>;

/// The edges that a model's mid-side nodes lie on, in order, corners counted from 1.
Edges edgesOf(std::string const& type)
{
    if (type == "he20")
        return {{1, 2}, {2, 3}, {3, 4}, {4, 1}, {5, 6}, {6, 7},
                {7, 8}, {8, 5}, {1, 5}, {2, 6}, {3, 7}, {4, 8}};
    if (type == "pe15")
        return {{1, 2}, {2, 3}, {3, 1}, {4, 5}, {5, 6}, {6, 4}, {1, 4}, {2, 5}, {3, 6}};
    if (type == "te10")
        return {{1, 2}, {2, 3}, {3, 1}, {1, 4}, {2, 4}, {3, 4}};
    if (type == "tr6")
        return {{1, 2}, {2, 3}, {3, 1}};
    if (type == "qu8")
        return {{1, 2}, {2, 3}, {3, 4}, {4, 1}};
    return {{1, 2}};
}

std::vector<std::array<double, 3>> modelCoordinates(Frd::Mesh const& mesh)
{
    Frd::Element const& element = mesh.elements().at(0);
    std::vector<std::array<double, 3>> coordinates;
    for (std::size_t const position : element.type->modelOrder)
        coordinates.push_back(mesh.nodes().at(mesh.nodeOf(element, position)).coordinates);
    return coordinates;
}

void expectSolversMidSideNodesOnTheirEdges(std::string const& type)
{
    Frd::Reader const reader(TestFiles::solverFile(type));
    ASSERT_EQ(reader.mesh().elements().at(0).type->name, type);
    auto const nodes = modelCoordinates(reader.mesh());
    Edges const edges = edgesOf(type);
    std::size_t const corners = nodes.size() - edges.size();
    for (std::size_t i = 0; i < edges.size(); ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_EQ(nodes[corners + i][axis],
                      (nodes[edges[i].first - 1][axis] + nodes[edges[i].second - 1][axis]) / 2)
                << type << " edge " << i << " axis " << axis;
}

TEST(Topology, EveryNumberHasItsNameDimensionAndNodeCount)
{
    struct Expected
    {
        char const* name;
        int dimension;
        std::size_t nodeCount;
    };
    std::array<Expected, 12> const expected = {{{"he8", 3, 8},
                                                {"pe6", 3, 6},
                                                {"te4", 3, 4},
                                                {"he20", 3, 20},
                                                {"pe15", 3, 15},
                                                {"te10", 3, 10},
                                                {"tr3", 2, 3},
                                                {"tr6", 2, 6},
                                                {"qu4", 2, 4},
                                                {"qu8", 2, 8},
                                                {"be2", 1, 2},
                                                {"be3", 1, 3}}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        Topology const* const type = Topology::find(static_cast<std::int64_t>(i + 1));
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(type->number, static_cast<int>(i + 1));
        EXPECT_STREQ(type->name, expected[i].name);
        EXPECT_EQ(type->dimension, expected[i].dimension);
        EXPECT_EQ(type->nodeCount, expected[i].nodeCount);
    }
}

TEST(Topology, OtherNumbersAreUnknown)
{
    EXPECT_EQ(Topology::find(0), nullptr);
    EXPECT_EQ(Topology::find(13), nullptr);
    EXPECT_EQ(Topology::find(-1), nullptr);
}

TEST(Topology, HexahedraOfSecondOrderGetTheirVerticalEdgesLast)
{
    EXPECT_EQ(Topology::find(4)->modelOrder,
              (Order{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15}));
}

TEST(Topology, WedgesOfSecondOrderGetTheirVerticalEdgesLast)
{
    EXPECT_EQ(Topology::find(5)->modelOrder,
              (Order{0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11}));
}

TEST(Topology, AllOtherTypesKeepTheFilesOrder)
{
    for (std::int64_t const number : {1, 2, 3, 6, 7, 8, 9, 10, 11, 12}) {
        Topology const& type = *Topology::find(number);
        ASSERT_EQ(type.modelOrder.size(), type.nodeCount);
        for (std::size_t i = 0; i < type.nodeCount; ++i)
            EXPECT_EQ(type.modelOrder[i], i) << type.name;
    }
}

TEST(Topology, MidSideNodesOfTheSolversElementsLieInTheMiddleOfTheirEdges)
{
    for (char const* type : {"he20", "pe15", "te10", "tr6", "qu8", "be3"})
        expectSolversMidSideNodesOnTheirEdges(type);
}

TEST(Topology, CornersOfTheSolversElementsStandInTheDecksOrder)
{
    for (char const* type : {"he8", "pe6", "te4", "tr3", "qu4", "be2"}) {
        Frd::Reader const reader(TestFiles::solverFile(type));
        Frd::Element const& element = reader.mesh().elements().at(0);
        ASSERT_STREQ(element.type->name, type);
        for (std::size_t i = 0; i < element.type->nodeCount; ++i)
            EXPECT_EQ(reader.mesh().nodes().at(reader.mesh().nodeOf(element, i)).id, i + 1) << type;
    }
}

} // namespace
