// Elements that a host gives in the order of another program are where docs/model-layout.md has
// them, in the model and in what VTK reads of it.

#include "ElementOrder.h"

#include <Zyl2/Mox2/Mesh.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ElementOrder;
using namespace Zyl2::Mox2;

struct Given
{
    ElementType type;
    char const* shape;
    /// By the documentation of the program whose order it is.
    std::string nodes;
};

std::filesystem::path writeMesh(Support::Folder const& folder, Element const& element,
                                ElementType type, NodeOrder order)
{
    std::vector<Point> const points = pointsOf(element);
    // Descending, so that ids are in another order than rows.
    std::vector<int> ids(points.size());
    for (std::size_t i = 0; i < ids.size(); ++i)
        ids[i] = static_cast<int>(1000 - 3 * i);
    std::vector<double> firsts;
    std::vector<double> seconds;
    for (Point const& point : points) {
        firsts.push_back(first(point));
        seconds.push_back(second(point));
    }
    Model model;
    model.saveTo(folder.path("mesh.mox").string());
    unsigned int const root = model.addNode(NodeType::RootGroup, "root");
    Mesh mesh(model, root, "shape", order, NodeNumbering::Ids);
    mesh.setNodes(points, ids);
    mesh.setElements({Elements(type, ArrayView::table(ids, ids.size()))});
    mesh.addNodeResult("FIRST", firsts);
    mesh.addNodeResult("SECOND", seconds);
    model.close();
    return folder.path("mesh.mox");
}

void expectAll(NodeOrder order, std::vector<Given> const& all)
{
    for (Given const& given : all)
        expectInOrder(
            {std::to_string(static_cast<unsigned int>(given.type)), given.shape, given.nodes},
            [&](Support::Folder const& folder, Element const& element) {
                return writeMesh(folder, element, given.type, order);
            });
}

std::vector<Given> const inEveryOrder = {
    {ElementType::Point1, "point", "1"},
    {ElementType::Line2, "line", "1 2"},
    {ElementType::Triangle3, "triangle", "1 2 3"},
    {ElementType::Triangle6, "triangle", "1 2 3 12 23 31"},
    {ElementType::Quadrangle4, "quadrangle", "1 2 3 4"},
    {ElementType::Quadrangle8, "quadrangle", "1 2 3 4 12 23 34 41"},
    {ElementType::Quadrangle9, "quadrangle", "1 2 3 4 12 23 34 41 1234"},
    {ElementType::Tetrahedron4, "tetrahedron", "1 2 3 4"},
    {ElementType::Pyramid5, "pyramid", "1 2 3 4 5"},
    {ElementType::Hexahedron8, "hexahedron", "1 2 3 4 5 6 7 8"},
};
std::string const tetrahedron = "1 2 3 4 12 23 31 14 24 34";
std::string const pyramid = "1 2 3 4 5 12 23 34 41 15 25 35 45";
std::string const wedge = "1 2 3 4 5 6 12 23 31 45 56 64 14 25 36";
std::string const hexahedron = "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48";

TEST(MeshOrder, OfTheFile)
{
    expectAll(NodeOrder::Model, inEveryOrder);
    expectAll(NodeOrder::Model,
              {{ElementType::Line3, "line", "1 2 12"},
               {ElementType::Line4, "line", "1 2 112 122"},
               {ElementType::Triangle7, "triangle", "1 2 3 12 23 31 123"},
               {ElementType::Tetrahedron10, "tetrahedron", tetrahedron},
               {ElementType::Pyramid13, "pyramid", pyramid},
               {ElementType::Pyramid19, "pyramid", pyramid + " 1234 125 235 345 415 12345"},
               {ElementType::Wedge6, "wedge", "1 2 3 4 5 6"},
               {ElementType::Wedge15, "wedge", wedge},
               {ElementType::Wedge18, "wedge", wedge + " 1254 2365 3146"},
               {ElementType::Hexahedron20, "hexahedron", hexahedron},
               {ElementType::Hexahedron24, "hexahedron", hexahedron + " 1584 2376 1265 4873"},
               {ElementType::Hexahedron27, "hexahedron",
                hexahedron + " 1584 2376 1265 4873 1234 5678 12345678"}});
}

TEST(MeshOrder, OfVtk)
{
    std::string const turned = "1 3 2 4 6 5 13 32 21 46 65 54 14 36 25";
    expectAll(NodeOrder::Vtk, inEveryOrder);
    expectAll(NodeOrder::Vtk,
              {{ElementType::Line3, "line", "1 2 12"},
               {ElementType::Line4, "line", "1 2 112 122"},
               {ElementType::Triangle7, "triangle", "1 2 3 12 23 31 123"},
               {ElementType::Tetrahedron10, "tetrahedron", tetrahedron},
               {ElementType::Pyramid13, "pyramid", pyramid},
               {ElementType::Pyramid19, "pyramid", pyramid + " 1234 125 235 345 415 12345"},
               {ElementType::Wedge6, "wedge", "1 3 2 4 6 5"},
               {ElementType::Wedge15, "wedge", turned},
               {ElementType::Wedge18, "wedge", turned + " 1364 3256 2145"},
               {ElementType::Hexahedron20, "hexahedron", hexahedron},
               {ElementType::Hexahedron24, "hexahedron", hexahedron + " 1584 2376 1265 4873"},
               {ElementType::Hexahedron27, "hexahedron",
                hexahedron + " 1584 2376 1265 4873 1234 5678 12345678"}});
}

TEST(MeshOrder, OfAbaqus)
{
    expectAll(NodeOrder::Abaqus, inEveryOrder);
    expectAll(NodeOrder::Abaqus, {{ElementType::Line3, "line", "1 12 2"},
                                  {ElementType::Tetrahedron10, "tetrahedron", tetrahedron},
                                  {ElementType::Wedge6, "wedge", "1 2 3 4 5 6"},
                                  {ElementType::Wedge15, "wedge", wedge},
                                  {ElementType::Wedge18, "wedge", wedge + " 1254 2365 3146"},
                                  {ElementType::Hexahedron20, "hexahedron", hexahedron},
                                  {ElementType::Hexahedron27, "hexahedron",
                                   hexahedron + " 12345678 1234 5678 1265 2376 3487 4158"}});
}

TEST(MeshOrder, OfGmsh)
{
    std::string const sortedWedge = "1 2 3 4 5 6 12 13 14 23 25 36 45 46 56";
    std::string const sortedHexahedron = "1 2 3 4 5 6 7 8 12 14 15 23 26 34 37 48 56 58 67 78";
    expectAll(NodeOrder::Gmsh, inEveryOrder);
    expectAll(NodeOrder::Gmsh,
              {{ElementType::Line3, "line", "1 2 12"},
               {ElementType::Line4, "line", "1 2 112 122"},
               {ElementType::Tetrahedron10, "tetrahedron", "1 2 3 4 12 23 31 14 34 24"},
               {ElementType::Pyramid13, "pyramid", "1 2 3 4 5 12 14 15 23 25 34 35 45"},
               {ElementType::Wedge6, "wedge", "1 2 3 4 5 6"},
               {ElementType::Wedge15, "wedge", sortedWedge},
               {ElementType::Wedge18, "wedge", sortedWedge + " 1254 1463 2365"},
               {ElementType::Hexahedron20, "hexahedron", sortedHexahedron},
               {ElementType::Hexahedron27, "hexahedron",
                sortedHexahedron + " 1432 1265 1584 2376 3487 5678 12345678"}});
}

TEST(MeshOrder, OfCgns)
{
    std::string const uprightFirst = "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64";
    std::string const uprightFirstHexahedron =
        "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85";
    expectAll(NodeOrder::Cgns, inEveryOrder);
    expectAll(NodeOrder::Cgns,
              {{ElementType::Line3, "line", "1 2 12"},
               {ElementType::Line4, "line", "1 2 112 122"},
               {ElementType::Tetrahedron10, "tetrahedron", tetrahedron},
               {ElementType::Pyramid13, "pyramid", pyramid},
               {ElementType::Wedge6, "wedge", "1 2 3 4 5 6"},
               {ElementType::Wedge15, "wedge", uprightFirst},
               {ElementType::Wedge18, "wedge", uprightFirst + " 1254 2365 3146"},
               {ElementType::Hexahedron20, "hexahedron", uprightFirstHexahedron},
               {ElementType::Hexahedron27, "hexahedron",
                uprightFirstHexahedron + " 1234 1265 2376 3487 4158 5678 12345678"}});
}

} // namespace
