// Every element that a model can hold can be drawn: no type of it is one that VTK can't cope with.

#include "ElementOrder.h"

#include "../export/Pixels.h"
#include "mox/ModelFile.h"

#include <export/Error.h>
#include <export/View.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>

namespace {

using namespace Zyl2::Mox2;
using ElementOrder::Element;
using ElementOrder::Point;
using ExportTest::Color;
using ExportTest::Pixels;
using MoxTest::ModelFile;
using Numbers = std::vector<unsigned int>;

struct Drawn
{
    unsigned int dimension;
    /// Its type is what a model names it; empty when dimension and number of nodes tell it.
    Element element;
};

std::string const tetrahedron = "1 2 3 4 12 23 31 14 24 34";
std::string const pyramid = "1 2 3 4 5 12 23 34 41 15 25 35 45";
std::string const wedge = "1 2 3 4 5 6 12 23 31 45 56 64";
std::string const hexahedron = "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48";
std::string const aroundHexahedron = " 1584 2376 1265 4873";

std::vector<Drawn> const toldByCount = {
    {1, {"", "point", "1"}},
    {1, {"", "line", "1 2"}},
    {1, {"", "triangle", "1 2 3"}},
    {1, {"", "quadrangle", "1 4 2 3"}},
    {2, {"", "triangle", "1 2 3"}},
    {2, {"", "triangle", "1 2 3 12 23 31"}},
    {2, {"", "triangle", "1 2 3 12 23 31 123"}},
    {2, {"", "quadrangle", "1 2 3 4"}},
    {2, {"", "quadrangle", "1 2 3 4 12 23 34 41"}},
    {2, {"", "quadrangle", "1 2 3 4 12 23 34 41 1234"}},
    {3, {"", "tetrahedron", "1 2 3 4"}},
    {3, {"", "tetrahedron", tetrahedron}},
    {3, {"", "pyramid", "1 2 3 4 5"}},
    {3, {"", "pyramid", pyramid}},
    {3, {"", "pyramid", pyramid + " 1234 125 235 345 415 12345"}},
    {3, {"", "wedge", "1 2 3 4 5 6"}},
    {3, {"", "wedge", wedge + " 14 25 36"}},
    {3, {"", "wedge", wedge + " 14 25 36 1254 2365 3146"}},
    {3, {"", "hexahedron", "1 2 3 4 5 6 7 8"}},
    {3, {"", "hexahedron", hexahedron}},
    {3, {"", "hexahedron", hexahedron + aroundHexahedron}},
    {3, {"", "hexahedron", hexahedron + aroundHexahedron + " 1234 5678 12345678"}},
};

std::vector<Drawn> const named = {
    {1, {"Polyvertex", "quadrangle", "1 2 3 4"}},
    {1, {"Polyline", "quadrangle", "1 2 3 4"}},
    {2, {"Polygon", "quadrangle", "1 2 23 34 4"}},
    {2, {"Quadratic polygon", "quadrangle", "1 2 3 4 12 23 34 41"}},
    {2, {"Triangle strip", "quadrangle", "1 2 4 3"}},
    {2, {"Quadratic linear quad", "quadrangle", "1 2 3 4 12 34"}},
    {3, {"Quadratic linear wedge", "wedge", wedge}},
    {3, {"Pentagonal prism", "hexahedron", "1 2 23 34 4 5 6 67 78 8"}},
    {3, {"Hexagonal prism", "hexahedron", "12 2 23 34 4 41 56 6 67 78 8 85"}},
};

std::vector<Drawn> all()
{
    std::vector<Drawn> both = toldByCount;
    both.insert(both.end(), named.begin(), named.end());
    return both;
}

DatasetType typeOf(DatasetType ofLines, unsigned int dimension)
{
    return static_cast<DatasetType>(static_cast<unsigned int>(ofLines) + dimension - 1);
}

/// The elements of one shape, one beside the other, from a place on. All have the same dimension
/// and type.
void addShape(Model& model, std::vector<Drawn> const& elements, unsigned int place, bool hasFields)
{
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    std::vector<float> coordinates;
    std::vector<float> onNodes;
    std::vector<float> onElements;
    Numbers lengths;
    for (Drawn const& drawn : elements) {
        std::vector<Point> const points = ElementOrder::pointsOf(drawn.element);
        lengths.push_back(static_cast<unsigned int>(points.size()));
        onElements.push_back(static_cast<float>(place));
        for (Point const& point : points) {
            onNodes.push_back(static_cast<float>(ElementOrder::second(point)));
            coordinates.push_back(static_cast<float>(point[0]) + 4 * static_cast<float>(place % 6));
            coordinates.push_back(static_cast<float>(point[1]) + 5 * static_cast<float>(place / 6));
            coordinates.push_back(static_cast<float>(point[2]));
        }
        ++place;
    }
    Numbers connectivity(onNodes.size());
    std::iota(connectivity.begin(), connectivity.end(), 0U);
    unsigned int const dimension = elements.front().dimension;
    Attributes attributes;
    if (!elements.front().element.type.empty())
        attributes.set("ElementType", elements.front().element.type);
    model.addArrayProperty(DatasetType::Coordinates, Array2d<float>(onNodes.size(), 3, coordinates),
                           shape, Step());
    model.addArrayProperty(typeOf(DatasetType::Connectivity1, dimension),
                           Array1d<unsigned int>(connectivity), shape, Step(), attributes);
    model.addArrayProperty(typeOf(DatasetType::Polylength1, dimension),
                           Array1d<unsigned int>(lengths), shape, Step());
    if (hasFields) {
        model.addArrayProperty("N", DatasetType::Result10, Array1d<float>(onNodes), shape, Step());
        model.addArrayProperty("E", DatasetType::Result14, Array1d<float>(onElements), shape,
                               Step());
    }
    model.moveToParentNode();
    model.moveToParentNode();
}

class ElementPicture : public testing::Test
{
protected:
    ElementPicture() { ::unsetenv("DISPLAY"); }

    static Pixels draw(ModelFile const& file, std::string const& field = "")
    {
        Export::ViewOptions options;
        options.width = 480;
        options.height = 360;
        options.overwrite = true;
        options.edges = true;
        if (!field.empty())
            options.field = field;
        Export::viewModel(file.path(), file.path("out.png"), options);
        return Pixels(file.path("out.png"));
    }

    /// Between the title, the axes and the colour scale.
    static int drawn(Pixels const& pixels)
    {
        int count = 0;
        for (int y = 90; y < 310; ++y)
            for (int x = 100; x < 380; ++x)
                count += pixels.at(x, y) != Color{255, 255, 255} ? 1 : 0;
        return count;
    }
};

TEST_F(ElementPicture, EveryElementAloneIsDrawn)
{
    for (Drawn const& one : all()) {
        SCOPED_TRACE(one.element.type + one.element.shape + " " + one.element.nodes);
        ModelFile const file([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            addShape(model, {one}, 0, true);
        });
        bool const isPoint = one.element.nodes == "1" || one.element.type == "Polyvertex";
        EXPECT_GT(drawn(draw(file)), isPoint ? 2 : one.dimension == 1 ? 200 : 5000);
    }
}

TEST_F(ElementPicture, ElementsOfOneShapeAreDrawnTogether)
{
    for (unsigned int dimension = 1; dimension <= 3; ++dimension) {
        std::vector<Drawn> elements;
        for (Drawn const& one : toldByCount)
            if (one.dimension == dimension)
                elements.push_back(one);
        ModelFile const file([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            addShape(model, elements, 0, true);
        });
        for (char const* field : {"N", "E"})
            EXPECT_GT(drawn(draw(file, field)), dimension == 1 ? 200 : 2000) << dimension << field;
    }
}

TEST_F(ElementPicture, ElementsOfAllShapesAreDrawnTogether)
{
    for (bool const hasFields : {false, true}) {
        ModelFile const file([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            unsigned int place = 0;
            for (Drawn const& one : all())
                addShape(model, {one}, place++, hasFields);
        });
        EXPECT_GT(drawn(draw(file)), 10000);
        if (hasFields) {
            EXPECT_GT(drawn(draw(file, "E")), 10000);
        }
    }
}

TEST_F(ElementPicture, WhatVtkHasNoCellForIsTold)
{
    for (Drawn const& one : std::vector<Drawn>{
             {3, {"Tetrahedron 14", "tetrahedron", tetrahedron + " 123 124 234 134"}},
             {3, {"Tetrahedron 15", "tetrahedron", tetrahedron + " 123 124 234 134 1234"}},
             {3, {"Pyramid 14", "pyramid", pyramid + " 1234"}},
             {3, {"Wedge 21", "wedge", wedge + " 14 25 36 123 456 1254 2365 3146 123456"}}}) {
        ModelFile const file([&](Model& model) {
            model.addNode(NodeType::RootGroup, "root");
            addShape(model, {one}, 0, false);
        });
        EXPECT_THROW(draw(file), Export::Error) << one.element.type;
    }
}

} // namespace
