#include "TestFiles.h"

#include <read/frd/Reader.h>
#include <read/frd/Topology.h>

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace {

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

TEST(Topology, MidSideNodesOfTheSolversElementsLieInTheMiddleOfTheirEdges)
{
    for (char const* type : {"he20", "pe15", "te10", "tr6", "qu8", "be3"})
        expectSolversMidSideNodesOnTheirEdges(type);
}

} // namespace
