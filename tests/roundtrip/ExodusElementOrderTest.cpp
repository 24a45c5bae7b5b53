#include "ElementOrder.h"

#include "../read/exodus/ExodusFile.h"

#include <gtest/gtest.h>

namespace {

using namespace ElementOrder;

std::filesystem::path writeExodus(Support::Folder const& folder, Element const& element)
{
    std::vector<Point> const points = pointsOf(element);
    auto const count = static_cast<std::int64_t>(points.size());
    std::filesystem::path const path = folder.path("in.exo");
    ExodusTest::ExodusFile file(path, ExodusTest::parameters(count, 1, 1));
    std::array<ExodusTest::Values, 3> axes;
    std::array<ExodusTest::Values, 2> values;
    for (Point const& point : points) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            axes[axis].push_back(point[axis]);
        values[0].push_back(first(point));
        values[1].push_back(second(point));
    }
    file.coordinates(axes[0], axes[1], axes[2]);
    file.block(1, element.type, count, ExodusTest::numbersFromOne(count));
    file.variables(EX_NODAL, {"FIRST", "SECOND"});
    file.time(1, 0);
    file.variable(1, EX_NODAL, 1, 1, values[0]);
    file.variable(1, EX_NODAL, 2, 1, values[1]);
    return path;
}

} // namespace

// The upright edges stand before those of the top, and the centre of a solid before those of its
// faces.
TEST(ElementOrder, ElementsOfExodusArriveWhereTheyBelong)
{
    std::string const tetrahedron = "1 2 3 4 12 23 31 14 24 34";
    std::string const pyramid = "1 2 3 4 5 12 23 34 41 15 25 35 45";
    std::string const wedge = "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64";
    std::string const hexahedron = "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85";
    for (Element const& element : std::vector<Element>{
             {"SPHERE", "point", "1"},
             {"BAR", "line", "1 2"},
             {"BAR", "line", "1 2 12"},
             {"BAR", "line", "1 2 112 122"},
             {"TRI", "triangle", "1 2 3"},
             {"TRI", "triangle", "1 2 3 12 23 31"},
             {"TRI", "triangle", "1 2 3 12 23 31 123"},
             {"SHELL", "quadrangle", "1 2 3 4"},
             {"SHELL", "quadrangle", "1 2 3 4 12 23 34 41"},
             {"SHELL", "quadrangle", "1 2 3 4 12 23 34 41 1234"},
             {"TETRA", "tetrahedron", "1 2 3 4"},
             {"TETRA", "tetrahedron", tetrahedron},
             {"PYRAMID", "pyramid", "1 2 3 4 5"},
             {"PYRAMID", "pyramid", pyramid},
             {"PYRAMID", "pyramid", pyramid + " 1234 125 235 345 415 12345"},
             {"WEDGE", "wedge", "1 2 3 4 5 6"},
             {"WEDGE", "wedge", wedge},
             {"WEDGE", "wedge", wedge + " 1254 2365 3146"},
             {"HEX", "hexahedron", "1 2 3 4 5 6 7 8"},
             {"HEX", "hexahedron", hexahedron},
             {"HEX", "hexahedron", hexahedron + " 12345678 1234 5678 1584 2376 1265 3487"}})
        expectInOrder(element, writeExodus);
    struct Named
    {
        Element element;
        std::string elementType;
        bool isInVtk;
    };
    for (Named const& named : std::vector<Named>{
             {{"WEDGE", "wedge", "1 2 3 4 5 6 12 23 31 45 56 64"}, "Quadratic linear wedge", true},
             {{"WEDGE", "wedge", wedge + " 123456 123 456 2365 3146 1254"}, "Wedge 21", false},
             {{"TETRA", "tetrahedron", tetrahedron + " 123 234 134 124"}, "Tetrahedron 14", false},
             {{"TETRA", "tetrahedron", tetrahedron + " 1234 123 234 134 124"},
              "Tetrahedron 15",
              false},
             {{"PYRAMID", "pyramid", pyramid + " 1234"}, "Pyramid 14", false}})
        expectInOrder(named.element, writeExodus, {named.elementType, true, named.isInVtk});
}
