#include "OpenedFile.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <cgnslib.h>

#include <string>
#include <vector>

namespace {

using Support::Folder;
using VtkRead::FileKind;
using Doubles = std::vector<double>;
using Names = std::vector<std::string>;
using Rows = std::vector<std::uint32_t>;

Rows const hexahedron = {0, 1, 2, 3, 4, 5, 6, 7};
Doubles const unitCube = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};

/// Three faces of the cube in two sections, and conditions on the nodes of one and on another face.
void writeBoundaries(int file, int base, int zone)
{
    cgsize_t const walls[] = {1, 2, 3, 4, 5, 6, 7, 8};
    cgsize_t const inlet[] = {1, 4, 8, 5};
    cgsize_t const nodes[] = {1, 2, 3, 4};
    cgsize_t const face[] = {4};
    int number = 0;
    cg_section_write(file, base, zone, "Walls", CGNS_ENUMV(QUAD_4), 2, 3, 0, walls, &number);
    cg_section_write(file, base, zone, "Inlet", CGNS_ENUMV(QUAD_4), 4, 4, 0, inlet, &number);
    cg_family_write(file, base, "Family of walls", &number);
    cg_boco_write(file, base, zone, "On nodes", CGNS_ENUMV(FamilySpecified), CGNS_ENUMV(PointList),
                  4, nodes, &number);
    cg_goto(file, base, "Zone_t", zone, "ZoneBC_t", 1, "BC_t", number, "end");
    cg_famname_write("Family of walls");
    cg_boco_write(file, base, zone, "On a face", CGNS_ENUMV(BCInflow), CGNS_ENUMV(PointList), 1,
                  face, &number);
    ASSERT_EQ(cg_boco_gridlocation_write(file, base, zone, number, CGNS_ENUMV(FaceCenter)), CG_OK);
}

/// Writes a cube with CGNS' own library.
void writeCgns(std::filesystem::path const& path, int fileType, bool hasBoundaries = false)
{
    int file = 0;
    int base = 0;
    int zone = 0;
    int number = 0;
    int solution = 0;
    cgsize_t size[] = {8, 1, 0};
    cgsize_t const nodes[] = {1, 2, 3, 4, 5, 6, 7, 8};
    Doubles const temperature = {1, 2, 3, 4, 5, 6, 7, 8.5};
    ASSERT_EQ(cg_set_file_type(fileType), CG_OK);
    ASSERT_EQ(cg_open(path.c_str(), CG_MODE_WRITE, &file), CG_OK);
    cg_base_write(file, "Base", 3, 3, &base);
    cg_zone_write(file, base, "Zone one", size, CGNS_ENUMV(Unstructured), &zone);
    char const* const axes[] = {"CoordinateX", "CoordinateY", "CoordinateZ"};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Doubles values;
        for (std::size_t i = axis; i < unitCube.size(); i += 3)
            values.push_back(unitCube[i]);
        cg_coord_write(file, base, zone, CGNS_ENUMV(RealDouble), axes[axis], values.data(),
                       &number);
    }
    cg_section_write(file, base, zone, "Hexes", CGNS_ENUMV(HEXA_8), 1, 1, 0, nodes, &number);
    if (hasBoundaries)
        writeBoundaries(file, base, zone);
    cg_sol_write(file, base, zone, "Solution", CGNS_ENUMV(Vertex), &solution);
    cg_field_write(file, base, zone, solution, CGNS_ENUMV(RealDouble), "Temperature",
                   temperature.data(), &number);
    ASSERT_EQ(cg_close(file), CG_OK);
}

TEST(Cgns, ZonesAndSolutionsAreReadFromBothOfItsFileTypes)
{
    Folder const folder;
    for (int const type : {CG_FILE_HDF5, CG_FILE_ADF}) {
        std::filesystem::path const path = folder.path("in" + std::to_string(type) + ".cgns");
        writeCgns(path, type);
        OpenedFile const file(FileKind::Cgns, path);
        ASSERT_EQ(file.parts.size(), 1U);
        EXPECT_EQ(file.parts[0].name, "Zone one");
        EXPECT_EQ(file.parts[0].groups, (Names{"Base"}));
        EXPECT_EQ(file.parts[0].coordinates, unitCube);
        EXPECT_EQ(file.parts[0].connectivity, hexahedron);
        EXPECT_EQ(std::get<Doubles>(file.field("Temperature").values),
                  (Doubles{1, 2, 3, 4, 5, 6, 7, 8.5}));
        EXPECT_EQ(file.steps[0].name, "");
        EXPECT_TRUE(file.parts[0].attributes.empty());
        EXPECT_EQ(file.warnings(), Names());
    }
}

TEST(Cgns, BoundariesAreLeftOutWithAWarning)
{
    Folder const folder;
    for (int const type : {CG_FILE_HDF5, CG_FILE_ADF}) {
        std::filesystem::path const path = folder.path("in" + std::to_string(type) + ".cgns");
        constexpr bool hasBoundaries = true;
        writeCgns(path, type, hasBoundaries);
        OpenedFile const file(FileKind::Cgns, path);
        ASSERT_EQ(file.parts.size(), 1U);
        EXPECT_EQ(file.parts[0].name, "Zone one");
        EXPECT_EQ(file.parts[0].connectivity, hexahedron);
        EXPECT_EQ(file.warnings(), (Names{"2 sections of elements on boundaries were left out.",
                                          "2 boundary conditions were left out."}));
    }
}

} // namespace
