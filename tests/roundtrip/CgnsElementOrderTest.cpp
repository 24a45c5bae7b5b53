#include "ElementOrder.h"

#include <cgnslib.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace ElementOrder;

void check(int status)
{
    if (status != CG_OK)
        throw std::runtime_error(cg_get_error());
}

CGNS_ENUMT(ElementType_t) typeOf(std::string const& name)
{
    for (int type = 0; type < NofValidElementTypes; ++type)
        if (name == ElementTypeName[type])
            return static_cast<CGNS_ENUMT(ElementType_t)>(type);
    throw std::runtime_error("no type " + name);
}

template <typename Function>
std::vector<double> valuesOf(std::vector<Point> const& points, Function const& function)
{
    std::vector<double> values;
    for (Point const& point : points)
        values.push_back(function(point));
    return values;
}

void writeZone(int file, int base, Element const& element, std::vector<Point> const& points)
{
    int zone = 0;
    int number = 0;
    std::array<cgsize_t, 3> const sizes = {static_cast<cgsize_t>(points.size()), 1, 0};
    check(cg_zone_write(file, base, "Zone", sizes.data(), CGNS_ENUMV(Unstructured), &zone));
    std::array<char const*, 3> const axes = {"CoordinateX", "CoordinateY", "CoordinateZ"};
    for (std::size_t axis = 0; axis < 3; ++axis)
        check(cg_coord_write(
            file, base, zone, CGNS_ENUMV(RealDouble), axes[axis],
            valuesOf(points, [axis](Point const& point) { return point[axis]; }).data(), &number));
    std::vector<cgsize_t> nodes;
    for (std::size_t i = 1; i <= points.size(); ++i)
        nodes.push_back(static_cast<cgsize_t>(i));
    check(cg_section_write(file, base, zone, "Elements", typeOf(element.type), 1, 1, 0,
                           nodes.data(), &number));
    int solution = 0;
    check(cg_sol_write(file, base, zone, "Solution", CGNS_ENUMV(Vertex), &solution));
    check(cg_field_write(file, base, zone, solution, CGNS_ENUMV(RealDouble), "FIRST",
                         valuesOf(points, first).data(), &number));
    check(cg_field_write(file, base, zone, solution, CGNS_ENUMV(RealDouble), "SECOND",
                         valuesOf(points, second).data(), &number));
}

int dimensionOf(std::string const& shape)
{
    return shape == "line" ? 1 : shape == "triangle" || shape == "quadrangle" ? 2 : 3;
}

std::filesystem::path writeCgns(Support::Folder const& folder, Element const& element)
{
    std::filesystem::path const path = folder.path("in.cgns");
    int file = 0;
    int base = 0;
    check(cg_set_file_type(CG_FILE_HDF5));
    check(cg_open(path.c_str(), CG_MODE_WRITE, &file));
    check(cg_base_write(file, "Base", dimensionOf(element.shape), 3, &base));
    writeZone(file, base, element, pointsOf(element));
    check(cg_close(file));
    return path;
}

} // namespace

TEST(ElementOrder, ElementsOfCgnsArriveWhereTheyBelong)
{
    std::string const wedge = "1 2 3 4 5 6 12 23 31 14 25 36 45 56 64";
    std::string const hexahedron = "1 2 3 4 5 6 7 8 12 23 34 41 15 26 37 48 56 67 78 85";
    for (Element const& element : std::vector<Element>{
             {"BAR_2", "line", "1 2"},
             {"BAR_3", "line", "1 2 12"},
             {"TRI_3", "triangle", "1 2 3"},
             {"TRI_6", "triangle", "1 2 3 12 23 31"},
             {"QUAD_4", "quadrangle", "1 2 3 4"},
             {"QUAD_8", "quadrangle", "1 2 3 4 12 23 34 41"},
             {"QUAD_9", "quadrangle", "1 2 3 4 12 23 34 41 1234"},
             {"TETRA_4", "tetrahedron", "1 2 3 4"},
             {"TETRA_10", "tetrahedron", "1 2 3 4 12 23 31 14 24 34"},
             {"PYRA_5", "pyramid", "1 2 3 4 5"},
             {"PENTA_6", "wedge", "1 2 3 4 5 6"},
             {"PENTA_15", "wedge", wedge},
             {"PENTA_18", "wedge", wedge + " 1254 2365 3146"},
             {"HEXA_8", "hexahedron", "1 2 3 4 5 6 7 8"},
             {"HEXA_20", "hexahedron", hexahedron},
             {"HEXA_27", "hexahedron", hexahedron + " 1432 1265 2376 3487 1584 5678 12345678"}})
        expectInOrder(element, writeCgns);
}
