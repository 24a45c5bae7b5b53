#include "ElementOrder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace ElementOrder;

std::string gmshField(std::string const& name, double (*value)(Point const&),
                      std::vector<Point> const& points)
{
    std::ostringstream text;
    text << "$NodeData\n1\n\"" << name << "\"\n1\n0\n3\n0\n1\n" << points.size() << "\n";
    for (std::size_t i = 0; i < points.size(); ++i)
        text << i + 1 << " " << value(points[i]) << "\n";
    text << "$EndNodeData\n";
    return text.str();
}

std::filesystem::path writeGmsh(Support::Folder const& folder, Element const& element)
{
    std::vector<Point> const points = pointsOf(element);
    std::ostringstream text;
    text << "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n" << points.size() << "\n";
    for (std::size_t i = 0; i < points.size(); ++i)
        text << i + 1 << " " << points[i][0] << " " << points[i][1] << " " << points[i][2] << "\n";
    text << "$EndNodes\n$Elements\n1\n1 " << element.type << " 2 1 1";
    for (std::size_t i = 1; i <= points.size(); ++i)
        text << " " << i;
    text << "\n$EndElements\n"
         << gmshField("FIRST", first, points) << gmshField("SECOND", second, points);
    return folder.write("in.msh", text.str());
}

} // namespace

// Gmsh sorts the edges of a solid by their nodes.
TEST(ElementOrder, ElementsOfGmshArriveWhereTheyBelong)
{
    std::string const pyramid = "1 2 3 4 5 12 14 15 23 25 34 35 45";
    std::string const wedge = "1 2 3 4 5 6 12 13 14 23 25 36 45 46 56";
    std::string const hexahedron = "1 2 3 4 5 6 7 8 12 14 15 23 26 34 37 48 56 58 67 78";
    for (Element const& element : std::vector<Element>{
             {"15", "point", "1"},
             {"1", "line", "1 2"},
             {"8", "line", "1 2 12"},
             {"26", "line", "1 2 112 122"},
             {"2", "triangle", "1 2 3"},
             {"9", "triangle", "1 2 3 12 23 31"},
             {"3", "quadrangle", "1 2 3 4"},
             {"16", "quadrangle", "1 2 3 4 12 23 34 41"},
             {"10", "quadrangle", "1 2 3 4 12 23 34 41 1234"},
             {"4", "tetrahedron", "1 2 3 4"},
             {"11", "tetrahedron", "1 2 3 4 12 23 31 14 34 24"},
             {"7", "pyramid", "1 2 3 4 5"},
             {"19", "pyramid", pyramid},
             {"6", "wedge", "1 2 3 4 5 6"},
             {"18", "wedge", wedge},
             {"13", "wedge", wedge + " 1254 1463 2365"},
             {"5", "hexahedron", "1 2 3 4 5 6 7 8"},
             {"17", "hexahedron", hexahedron},
             {"12", "hexahedron", hexahedron + " 1432 1265 1584 2376 3487 5678 12345678"}})
        expectInOrder(element, writeGmsh);
    Expectation expectation;
    expectation.elementType = "Pyramid 14";
    expectation.isInVtk = false;
    expectInOrder({"14", "pyramid", pyramid + " 1234"}, writeGmsh, expectation);
}
