#include "mox/check/ElementSize.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

using Mox::Check::ElementKind;
using Mox::Check::ElementKinds;
using Mox::Check::ElementSize;
using Mox::Check::Point;
using Points = std::vector<Point>;

namespace {

Points const tetrahedron = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
Points const pyramid = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}};
Points const wedge = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
Points const cube = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                     {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

using Edges = std::vector<std::pair<std::size_t, std::size_t>>;

Edges const tetrahedronEdges = {{1, 2}, {2, 3}, {3, 1}, {1, 4}, {2, 4}, {3, 4}};
Edges const pyramidEdges = {{1, 2}, {2, 3}, {3, 4}, {4, 1}, {1, 5}, {2, 5}, {3, 5}, {4, 5}};
Edges const wedgeEdges = {{1, 2}, {2, 3}, {3, 1}, {4, 5}, {5, 6}, {6, 4}, {1, 4}, {2, 5}, {3, 6}};
Edges const cubeEdges = {{1, 2}, {2, 3}, {3, 4}, {4, 1}, {5, 6}, {6, 7},
                         {7, 8}, {8, 5}, {1, 5}, {2, 6}, {3, 7}, {4, 8}};

/// The element with a node in the middle of each edge, and others that say nothing of its size.
Points secondOrder(Points nodes, Edges const& edges, std::size_t others = 0)
{
    for (auto const& [from, to] : edges) {
        Point middle = {};
        for (std::size_t i = 0; i < 3; ++i)
            middle[i] = (nodes[from - 1][i] + nodes[to - 1][i]) / 2;
        nodes.push_back(middle);
    }
    nodes.resize(nodes.size() + others);
    return nodes;
}

ElementSize sizeOf(int dimension, Points const& nodes, std::string const& type = "")
{
    ElementKinds kinds(dimension, type);
    ElementKind const* const kind = kinds.of(static_cast<std::uint32_t>(nodes.size()));
    if (kind == nullptr)
        throw std::logic_error("no such element");
    return {*kind, nodes};
}

/// A prism over a regular polygon of radius 1 that is 1 high.
Points regularPrism(int corners)
{
    Points nodes;
    for (double const height : {0.0, 1.0})
        for (int i = 0; i < corners; ++i) {
            double const angle = 2 * 3.14159265358979 * i / corners;
            nodes.push_back({std::cos(angle), std::sin(angle), height});
        }
    return nodes;
}

Points randomCube(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> shift(-0.2, 0.2);
    Points nodes = cube;
    for (Point& node : nodes)
        for (double& coordinate : node)
            coordinate += shift(random);
    return nodes;
}

double determinant(Point const& a, Point const& b, Point const& c)
{
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// The integral of the shape functions' Jacobian, which two points in each direction give exactly.
double integratedVolume(Points const& nodes)
{
    double volume = 0;
    double const near = 0.5 - std::sqrt(1.0 / 12);
    for (double const r : {near, 1 - near})
        for (double const s : {near, 1 - near})
            for (double const t : {near, 1 - near}) {
                Points derivatives(3, Point{});
                for (std::size_t node = 0; node < cube.size(); ++node) {
                    auto const& [x, y, z] = cube[node];
                    double const a = x > 0 ? r : 1 - r, b = y > 0 ? s : 1 - s,
                                 c = z > 0 ? t : 1 - t;
                    for (std::size_t i = 0; i < 3; ++i) {
                        derivatives[0][i] += (x > 0 ? 1 : -1) * b * c * nodes[node][i];
                        derivatives[1][i] += a * (y > 0 ? 1 : -1) * c * nodes[node][i];
                        derivatives[2][i] += a * b * (z > 0 ? 1 : -1) * nodes[node][i];
                    }
                }
                volume += determinant(derivatives[0], derivatives[1], derivatives[2]) / 8;
            }
    return volume;
}

} // namespace

TEST(ElementSize, EverySolidHasItsVolume)
{
    struct Case
    {
        Points nodes;
        double volume;
        std::string type;
    };
    for (Case const& solid : std::vector<Case>{
             {tetrahedron, 1.0 / 6, ""},
             {secondOrder(tetrahedron, tetrahedronEdges), 1.0 / 6, ""},
             {secondOrder(tetrahedron, tetrahedronEdges, 4), 1.0 / 6, "Tetrahedron 14"},
             {secondOrder(tetrahedron, tetrahedronEdges, 5), 1.0 / 6, "Tetrahedron 15"},
             {pyramid, 1.0 / 3, ""},
             {secondOrder(pyramid, pyramidEdges), 1.0 / 3, ""},
             {secondOrder(pyramid, pyramidEdges, 1), 1.0 / 3, "Pyramid 14"},
             {secondOrder(pyramid, pyramidEdges, 6), 1.0 / 3, ""},
             {wedge, 0.5, ""},
             {secondOrder(wedge, Edges(wedgeEdges.begin(), wedgeEdges.begin() + 6)), 0.5,
              "Quadratic linear wedge"},
             {secondOrder(wedge, wedgeEdges), 0.5, ""},
             {secondOrder(wedge, wedgeEdges, 3), 0.5, ""},
             {secondOrder(wedge, wedgeEdges, 6), 0.5, "Wedge 21"},
             {cube, 1, ""},
             {secondOrder(cube, cubeEdges), 1, ""},
             {secondOrder(cube, cubeEdges, 4), 1, ""},
             {secondOrder(cube, cubeEdges, 7), 1, ""},
             {regularPrism(5), 2.37764129, "Pentagonal prism"},
             {regularPrism(6), 2.59807621, "Hexagonal prism"}}) {
        ElementSize const size = sizeOf(3, solid.nodes, solid.type);
        EXPECT_NEAR(size.value(), solid.volume, 1e-8) << solid.nodes.size() << solid.type;
        EXPECT_FALSE(size.isNegative() || size.isZero() || size.isTwisted());
    }
}

TEST(ElementSize, ADistortedHexahedronHasTheVolumeOfItsShapeFunctions)
{
    for (unsigned seed = 0; seed < 100; ++seed) {
        Points const nodes = randomCube(seed);
        EXPECT_NEAR(sizeOf(3, nodes).value(), integratedVolume(nodes), 1e-12) << "seed " << seed;
    }
}

TEST(ElementSize, EverySurfaceAndLineHasItsSize)
{
    Points const square(cube.begin(), cube.begin() + 4);
    Points const triangle(tetrahedron.begin(), tetrahedron.begin() + 3);
    Edges const around3 = {{1, 2}, {2, 3}, {3, 1}};
    Edges const around4 = {{1, 2}, {2, 3}, {3, 4}, {4, 1}};
    EXPECT_DOUBLE_EQ(sizeOf(2, triangle).value(), 0.5);
    EXPECT_DOUBLE_EQ(sizeOf(2, secondOrder(triangle, around3)).value(), 0.5);
    EXPECT_DOUBLE_EQ(sizeOf(2, secondOrder(triangle, around3, 1)).value(), 0.5);
    EXPECT_DOUBLE_EQ(sizeOf(2, square).value(), 1);
    EXPECT_DOUBLE_EQ(sizeOf(2, secondOrder(square, around4)).value(), 1);
    EXPECT_DOUBLE_EQ(sizeOf(2, secondOrder(square, around4, 1)).value(), 1);
    EXPECT_DOUBLE_EQ(
        sizeOf(2, secondOrder(square, {{1, 2}, {3, 4}}), "Quadratic linear quad").value(), 1);
    EXPECT_DOUBLE_EQ(sizeOf(2, square, "Polygon").value(), 1);
    EXPECT_DOUBLE_EQ(sizeOf(2, secondOrder(square, around4), "Quadratic polygon").value(), 1);
    EXPECT_DOUBLE_EQ(
        sizeOf(2, {square[0], square[1], square[3], square[2]}, "Triangle strip").value(), 1);
    EXPECT_DOUBLE_EQ(sizeOf(1, {{0, 0, 0}, {3, 0, 0}, {1, 0, 0}, {2, 0, 0}}).value(), 3);
    EXPECT_DOUBLE_EQ(sizeOf(1, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, "Polyline").value(), 2);
    EXPECT_FALSE(sizeOf(1, {{0, 0, 0}}).isZero());
}

// Its corners lie in one line, and only its mid-side nodes say that it is round.
TEST(ElementSize, HalfARingHasAnAreaByItsMidSideNodes)
{
    ElementSize const size = sizeOf(2, {{1, 0, 0},
                                        {2, 0, 0},
                                        {-2, 0, 0},
                                        {-1, 0, 0},
                                        {1.5, 0, 0},
                                        {0, 2, 0},
                                        {-1.5, 0, 0},
                                        {0, 1, 0}});
    EXPECT_NEAR(size.value(), 3, 1e-12);
    EXPECT_FALSE(size.isZero());
}

// Floats tell no two points apart that are closer than that.
TEST(ElementSize, WhatIsThinnerThanFloatsCanTellHasNoVolume)
{
    Points nodes = cube;
    for (Point& node : nodes)
        node = {node[0] + 1000, node[1], 1e-5 * node[2]};
    EXPECT_TRUE(sizeOf(3, nodes).isZero());
    EXPECT_FALSE(sizeOf(3, nodes).isTwisted());
    for (Point& node : nodes)
        node[2] *= 100;
    EXPECT_FALSE(sizeOf(3, nodes).isZero());
}

TEST(ElementSize, ACollapsedHexahedronHasAVolume)
{
    Points nodes = cube;
    nodes[3] = nodes[2];
    nodes[7] = nodes[6];
    EXPECT_DOUBLE_EQ(sizeOf(3, nodes).value(), 0.5);
}
