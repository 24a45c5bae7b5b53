// Elements of each format, with the nodes where that format defines them, become models in which
// they are where docs/model-layout.md has them, and cells where VTK has them. Here are the formats
// that can be written as text.

#include "ElementOrder.h"

#include "support/VtkGrids.h"

#include <vtkCellType.h>
#include <vtkDoubleArray.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

namespace {

using namespace ElementOrder;
using Support::Folder;
using Elements = std::vector<Element>;
using Function = double (*)(Point const&);

struct NamedFunction
{
    char const* name;
    Function value;
};

constexpr std::array<NamedFunction, 2> fields{{{"FIRST", first}, {"SECOND", second}}};

std::string format(char const* pattern, double value)
{
    std::array<char, 40> text = {};
    std::snprintf(text.data(), text.size(), pattern, value);
    return text.data();
}

std::string integer(std::size_t value, std::size_t width)
{
    std::string const text = std::to_string(value);
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string numbersUpTo(std::size_t count, std::size_t width)
{
    std::string text;
    for (std::size_t i = 1; i <= count; ++i)
        text += integer(i, width);
    return text;
}

// Files of VTK.

/// The types of VTK's cells as they follow each other in vtkCellType.h, by the documentation of
/// their classes. Base and top of wedges are counter-clockwise seen from below.
std::filesystem::path writeVtu(Folder const& folder, Element const& element)
{
    std::vector<Point> const points = pointsOf(element);
    int const count = static_cast<int>(points.size());
    auto const grid = Support::gridOf(count, {Support::cellOver(std::stoi(element.type), count)});
    for (int i = 0; i < count; ++i)
        grid->GetPoints()->SetPoint(i, points[static_cast<std::size_t>(i)].data());
    for (auto const& [name, value] : fields) {
        std::vector<double> values;
        for (Point const& point : points)
            values.push_back(value(point));
        grid->GetPointData()->AddArray(Support::arrayOf<vtkDoubleArray>(name, 1, values));
    }
    return Support::writeWith<vtkXMLUnstructuredGridWriter>(folder.path("in.vtu"), grid);
}

TEST(ElementOrder, CellsOfVtkArriveWhereTheyBelong)
{
    std::string const tetrahedron = "1 2 3 4 12 23 31 14 24 34";
    std::string const pyramid = "1 2 3 4 5 12 23 34 41 15 25 35 45";
    std::string const hexahedron = "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48";
    std::string const wedge = "1 3 2 4 6 5 13 32 21 46 65 54";
    struct Cell
    {
        int type;
        char const* shape;
        std::string nodes;
        std::string elementType;
    };
    for (Cell const& cell : std::vector<Cell>{
             {VTK_VERTEX, "point", "1", ""},
             {VTK_LINE, "line", "1 2", ""},
             {VTK_QUADRATIC_EDGE, "line", "1 2 12", ""},
             {VTK_CUBIC_LINE, "line", "1 2 112 122", ""},
             {VTK_LAGRANGE_CURVE, "line", "1 2 112 122", ""},
             {VTK_TRIANGLE, "triangle", "1 2 3", ""},
             {VTK_QUADRATIC_TRIANGLE, "triangle", "1 2 3 12 23 31", ""},
             {VTK_BIQUADRATIC_TRIANGLE, "triangle", "1 2 3 12 23 31 123", ""},
             {VTK_QUAD, "quadrangle", "1 2 3 4", ""},
             {VTK_PIXEL, "quadrangle", "1 2 4 3", ""},
             {VTK_QUADRATIC_LINEAR_QUAD, "quadrangle", "1 2 3 4 12 34", "Quadratic linear quad"},
             {VTK_QUADRATIC_QUAD, "quadrangle", "1 2 3 4 12 23 34 41", ""},
             {VTK_BIQUADRATIC_QUAD, "quadrangle", "1 2 3 4 12 23 34 41 1234", ""},
             {VTK_LAGRANGE_QUADRILATERAL, "quadrangle", "1 2 3 4 12 23 34 41 1234", ""},
             {VTK_TETRA, "tetrahedron", "1 2 3 4", ""},
             {VTK_QUADRATIC_TETRA, "tetrahedron", tetrahedron, ""},
             {VTK_LAGRANGE_TETRAHEDRON, "tetrahedron", tetrahedron, ""},
             {VTK_PYRAMID, "pyramid", "1 2 3 4 5", ""},
             {VTK_QUADRATIC_PYRAMID, "pyramid", pyramid, ""},
             {VTK_TRIQUADRATIC_PYRAMID, "pyramid", pyramid + " 1234 125 235 345 415 12345", ""},
             {VTK_WEDGE, "wedge", "1 3 2 4 6 5", ""},
             {VTK_QUADRATIC_LINEAR_WEDGE, "wedge", wedge, "Quadratic linear wedge"},
             {VTK_QUADRATIC_WEDGE, "wedge", wedge + " 14 36 25", ""},
             {VTK_BIQUADRATIC_QUADRATIC_WEDGE, "wedge", wedge + " 14 36 25 1364 3256 2145", ""},
             // Those of any order are the other way round.
             {VTK_LAGRANGE_WEDGE, "wedge", "1 2 3 4 5 6", ""},
             {VTK_LAGRANGE_WEDGE, "wedge", "1 2 3 4 5 6 12 23 31 45 56 64 14 25 36 1254 2365 3146",
              ""},
             {VTK_BEZIER_WEDGE, "wedge", "1 2 3 4 5 6", ""},
             {VTK_HEXAHEDRON, "hexahedron", "1 2 3 4 5 6 7 8", ""},
             {VTK_VOXEL, "hexahedron", "1 2 4 3 5 6 8 7", ""},
             {VTK_QUADRATIC_HEXAHEDRON, "hexahedron", hexahedron, ""},
             {VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, "hexahedron",
              hexahedron + " 1584 2376 1265 4873", ""},
             {VTK_TRIQUADRATIC_HEXAHEDRON, "hexahedron",
              hexahedron + " 1584 2376 1265 4873 1234 5678 12345678", ""},
             {VTK_LAGRANGE_HEXAHEDRON, "hexahedron",
              hexahedron + " 1584 2376 1265 4873 1234 5678 12345678", ""}})
        expectInOrder({std::to_string(cell.type), cell.shape, cell.nodes}, writeVtu,
                      {cell.elementType});
}

// Files of a solver.

std::string frdCoordinates(std::vector<Point> const& points)
{
    std::string text = "    2C" + integer(points.size(), 30) + std::string(37, ' ') + "1\n";
    for (std::size_t i = 0; i < points.size(); ++i) {
        text += " -1" + integer(i + 1, 10);
        for (double const coordinate : points[i])
            text += format("%12.5E", coordinate);
        text += '\n';
    }
    return text + " -3\n";
}

std::string frdElement(std::string const& type, std::size_t nodeCount)
{
    std::string text = "    3C" + integer(1, 30) + std::string(37, ' ') + "1\n -1" +
                       integer(1, 10) + integer(std::stoul(type), 5) + integer(0, 5) +
                       integer(1, 5);
    for (std::size_t i = 0; i < nodeCount; ++i)
        text += (i % 10 == 0 ? "\n -2" : "") + integer(i + 1, 10);
    return text + "\n -3\n";
}

std::string frdField(NamedFunction const& field, std::vector<Point> const& points)
{
    std::string const name = field.name + std::string(8 - std::string(field.name).size(), ' ');
    std::string text = "  100CL  101 1.00000E+00" + integer(points.size(), 12) +
                       std::string(20, ' ') + "0" + integer(1, 5) + integer(1, 12) + "\n -4  " +
                       name + integer(1, 5) + integer(1, 5) + "\n -5  " + name + integer(1, 5) +
                       integer(1, 5) + integer(0, 5) + integer(0, 5) + "\n";
    for (std::size_t i = 0; i < points.size(); ++i)
        text += " -1" + integer(i + 1, 10) + format("%12.5E", field.value(points[i])) + "\n";
    return text + " -3\n";
}

std::filesystem::path writeFrd(Folder const& folder, Element const& element)
{
    std::vector<Point> const points = pointsOf(element);
    std::string text =
        "    1C\n" + frdCoordinates(points) + frdElement(element.type, points.size());
    for (NamedFunction const& field : fields)
        text += frdField(field, points);
    return folder.write("in.frd", text + " 9999\n");
}

TEST(ElementOrder, ElementsOfFrdFilesArriveWhereTheyBelong)
{
    for (Element const& element :
         Elements{{"1", "hexahedron", "1 2 3 4 5 6 7 8"},
                  {"2", "wedge", "1 2 3 4 5 6"},
                  {"3", "tetrahedron", "1 2 3 4"},
                  {"4", "hexahedron", "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85"},
                  {"5", "wedge", "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64"},
                  {"6", "tetrahedron", "1 2 3 4 12 23 31 14 24 34"},
                  {"7", "triangle", "1 2 3"},
                  {"8", "triangle", "1 2 3 12 23 31"},
                  {"9", "quadrangle", "1 2 3 4"},
                  {"10", "quadrangle", "1 2 3 4 12 23 34 41"},
                  {"11", "line", "1 2"},
                  {"12", "line", "1 2 12"}})
        expectInOrder(element, writeFrd);
}

// EnSight Gold.

std::string enSightValues(std::vector<double> const& values)
{
    std::string text;
    for (double const value : values)
        text += format("%12.5e", value) + "\n";
    return text;
}

std::filesystem::path writeEnSight(Folder const& folder, Element const& element)
{
    std::vector<Point> const points = pointsOf(element);
    std::string geometry = "an element\n.\nnode id off\nelement id off\npart\n" + integer(1, 10) +
                           "\nBody\ncoordinates\n" + integer(points.size(), 10) + "\n";
    for (std::size_t axis = 0; axis < 3; ++axis) {
        std::vector<double> values;
        for (Point const& point : points)
            values.push_back(point[axis]);
        geometry += enSightValues(values);
    }
    geometry += element.type + "\n" + integer(1, 10) + "\n" + numbersUpTo(points.size(), 10) + "\n";
    folder.write("in.geo", geometry);
    std::string variables;
    for (auto const& [name, value] : fields) {
        std::vector<double> values;
        for (Point const& point : points)
            values.push_back(value(point));
        folder.write(std::string("in.") + name, std::string(name) + "\npart\n" + integer(1, 10) +
                                                    "\ncoordinates\n" + enSightValues(values));
        variables += std::string("scalar per node: ") + name + " in." + name + "\n";
    }
    return folder.write(
        "in.case", "FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: in.geo\nVARIABLE\n" + variables);
}

TEST(ElementOrder, ElementsOfEnSightArriveWhereTheyBelong)
{
    for (Element const& element :
         Elements{{"point", "point", "1"},
                  {"bar2", "line", "1 2"},
                  {"bar3", "line", "1 12 2"},
                  {"tria3", "triangle", "1 2 3"},
                  {"tria6", "triangle", "1 2 3 12 23 31"},
                  {"quad4", "quadrangle", "1 2 3 4"},
                  {"quad8", "quadrangle", "1 2 3 4 12 23 34 41"},
                  {"tetra4", "tetrahedron", "1 2 3 4"},
                  {"tetra10", "tetrahedron", "1 2 3 4 12 23 31 14 24 34"},
                  {"pyramid5", "pyramid", "1 2 3 4 5"},
                  {"pyramid13", "pyramid", "1 2 3 4 5 12 23 34 41 15 25 35 45"},
                  {"penta6", "wedge", "1 2 3 4 5 6"},
                  {"penta15", "wedge", "1 2 3 4 5 6 12 23 31 45 56 64 14 25 36"},
                  {"hexa8", "hexahedron", "1 2 3 4 5 6 7 8"},
                  {"hexa20", "hexahedron", "1 2 3 4 5 6 7 8 12 23 34 41 56 67 78 85 15 26 37 48"}})
        expectInOrder(element, writeEnSight);
}

// OpenFOAM: a cell is what its faces enclose. It has no values on nodes.

std::string foam(std::string const& kind, std::string const& object, std::string const& body)
{
    return "FoamFile\n{\n    version 2.0;\n    format ascii;\n    class " + kind +
           ";\n    object " + object + ";\n}\n" + body + "\n";
}

std::string foamPoints(std::vector<Point> const& points)
{
    std::ostringstream text;
    text << points.size() << "(";
    for (Point const& point : points)
        text << "(" << point[0] << " " << point[1] << " " << point[2] << ")";
    text << ")";
    return text.str();
}

/// From "132 456": "2(3(0 2 1)3(3 4 5))".
std::string foamFaces(std::string const& faces, std::size_t& count)
{
    std::istringstream words(faces);
    std::string text;
    count = 0;
    for (std::string face; words >> face; ++count) {
        text += std::to_string(face.size()) + "(";
        for (char const corner : face)
            text += std::to_string(corner - '1') + " ";
        text.back() = ')';
    }
    return std::to_string(count) + "(" + text + ")";
}

/// The type of an element is its faces here, seen from outside.
std::filesystem::path writeFoam(Folder const& folder, Element const& element)
{
    std::string const mesh = "case/constant/polyMesh/";
    std::filesystem::create_directories(folder.path(mesh));
    std::filesystem::create_directories(folder.path("case/system"));
    std::filesystem::create_directories(folder.path("case/0"));
    folder.write("case/system/controlDict",
                 foam("dictionary", "controlDict",
                      "startTime 0;\nendTime 1;\ndeltaT 1;\nwriteControl timeStep;\n"
                      "writeInterval 1;"));
    std::size_t count = 0;
    std::string const faces = foamFaces(element.type, count);
    std::string owners;
    for (std::size_t i = 0; i < count; ++i)
        owners += " 0";
    auto const write = [&](std::string const& name, std::string const& kind,
                           std::string const& body) {
        folder.write(mesh + name, foam(kind, name, body));
    };
    write("points", "vectorField", foamPoints(pointsOf(element)));
    write("faces", "faceList", faces);
    write("owner", "labelList", std::to_string(count) + "(" + owners + ")");
    write("neighbour", "labelList", "0()");
    write("boundary", "polyBoundaryMesh",
          "1(walls{type wall; nFaces " + std::to_string(count) + "; startFace 0;})");
    return folder.write("case/case.foam", "");
}

TEST(ElementOrder, CellsOfOpenFoamArriveWhereTheyBelong)
{
    for (Element const& element :
         Elements{{"132 124 234 314", "tetrahedron", "1 2 3 4"},
                  {"234 132 314 124", "tetrahedron", "1 2 3 4"},
                  {"1432 125 235 345 415", "pyramid", "1 2 3 4 5"},
                  {"125 235 345 1432 415", "pyramid", "1 2 3 4 5"},
                  {"132 456 1254 2365 3146", "wedge", "1 2 3 4 5 6"},
                  {"1254 2365 564 3146 213", "wedge", "1 2 3 4 5 6"},
                  {"1432 5678 1265 2376 3487 4158", "hexahedron", "1 2 3 4 5 6 7 8"},
                  {"1265 2376 3487 4158 1432 5678", "hexahedron", "1 2 3 4 5 6 7 8"}}) {
        Expectation expectation;
        expectation.hasFields = false;
        expectInOrder(element, writeFoam, expectation);
    }
}

} // namespace
