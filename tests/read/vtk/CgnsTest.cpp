#include "CgnsFile.h"
#include "OpenedFile.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Support::Folder;
using VtkRead::FileKind;
using Doubles = std::vector<double>;
using Names = std::vector<std::string>;
using Numbers = CgnsFile::Numbers;
using Rows = std::vector<std::uint32_t>;

Rows const cube = {0, 1, 2, 3, 4, 5, 6, 7};

auto const quads = CGNS_ENUMV(QUAD_4);
auto const triangles = CGNS_ENUMV(TRI_3);
auto const hexahedron = CGNS_ENUMV(HEXA_8);
auto const mixed = CGNS_ENUMV(MIXED);
auto const faces = CGNS_ENUMV(NGON_n);
auto const polyhedra = CGNS_ENUMV(NFACE_n);

std::vector<Numbers> const aQuadAndTriangles = {
    {quads, 1, 2, 3, 4}, {triangles, 5, 6, 7}, {triangles, 5, 7, 8}};

class Cgns : public ::testing::Test
{
protected:
    OpenedFile opened(bool skipUnknown = false) const
    {
        return OpenedFile(FileKind::Cgns, path_, skipUnknown);
    }

    Folder folder_;
    std::filesystem::path path_ = folder_.path("in.cgns");
};

TEST_F(Cgns, ZonesAndSolutionsAreReadFromBothOfItsFileTypes)
{
    for (int const type : {CG_FILE_HDF5, CG_FILE_ADF}) {
        {
            CgnsFile const file(path_, type);
            file.addCube();
            file.addTemperature({1, 2, 3, 4, 5, 6, 7, 8.5});
        }
        OpenedFile const file = opened();
        ASSERT_EQ(file.parts.size(), 1U);
        EXPECT_EQ(file.parts[0].name, "Zone one");
        EXPECT_EQ(file.parts[0].groups, (Names{"Base"}));
        EXPECT_EQ(file.parts[0].coordinates, CgnsFile::coordinates());
        EXPECT_EQ(file.parts[0].connectivity, cube);
        EXPECT_EQ(std::get<Doubles>(file.field("Temperature").values),
                  (Doubles{1, 2, 3, 4, 5, 6, 7, 8.5}));
        EXPECT_EQ(file.steps[0].name, "");
        EXPECT_TRUE(file.parts[0].attributes.empty());
        EXPECT_EQ(file.warnings(), Names());
    }
}

TEST_F(Cgns, BoundariesAreLeftOutWithAWarning)
{
    for (int const type : {CG_FILE_HDF5, CG_FILE_ADF}) {
        {
            CgnsFile const file(path_, type);
            file.addCube();
            file.addSection("Walls", quads, 2, 2, {1, 2, 3, 4, 5, 6, 7, 8});
            file.addSection("Inlet", quads, 4, 1, {1, 4, 8, 5});
            file.addCondition("On nodes", CGNS_ENUMV(Vertex), {1, 2, 3, 4}, "Family of walls");
            file.addCondition("On a face", CGNS_ENUMV(FaceCenter), {4});
        }
        OpenedFile const file = opened();
        ASSERT_EQ(file.parts.size(), 1U);
        EXPECT_EQ(file.parts[0].name, "Zone one");
        EXPECT_EQ(file.parts[0].connectivity, cube);
        EXPECT_EQ(file.warnings(), (Names{"2 sections of elements on boundaries were left out.",
                                          "2 boundary conditions were left out."}));
    }
}

TEST_F(Cgns, BoundariesOfMixedElementsAreLeftOutWithAWarning)
{
    for (int const type : {CG_FILE_HDF5, CG_FILE_ADF}) {
        {
            CgnsFile const file(path_, type);
            file.addSection("Cells", mixed, 1, {{hexahedron, 1, 2, 3, 4, 5, 6, 7, 8}});
            file.addSection("Walls", mixed, 2, aQuadAndTriangles);
            file.addSection("Edges", mixed, 5, {{CGNS_ENUMV(BAR_2), 1, 2}});
        }
        OpenedFile const file = opened();
        ASSERT_EQ(file.parts.size(), 1U);
        EXPECT_EQ(file.parts[0].connectivity, cube);
        EXPECT_EQ(file.warnings(), (Names{"2 sections of elements on boundaries were left out."}));
    }
}

TEST_F(Cgns, BoundariesOfPolygonsAreLeftOutWithAWarning)
{
    {
        CgnsFile const file(path_);
        file.addSection("Faces", faces, 1,
                        {{1, 4, 3, 2}, {5, 6, 7, 8}, {1, 2, 6, 5}, {2, 3, 7, 6}});
        file.addSection("More faces", faces, 5, {{3, 4, 8, 7}, {4, 1, 5, 8}});
        file.addSection("Cells", polyhedra, 7, {{-1, 2, 3, 4, 5, 6}});
        file.addSection("Walls", faces, 8, {{1, 2, 3, 4}});
    }
    constexpr bool skipUnknown = true;
    EXPECT_EQ(opened(skipUnknown).warnings(),
              (Names{"1 section of elements on boundaries was left out.",
                     "1 element of the type polyhedron was left out."}));
}

TEST_F(Cgns, ElementsOfALowerDimensionThatAreNumberedAmongTheCellsAreRead)
{
    {
        CgnsFile const file(path_, CG_FILE_HDF5, 3);
        file.addSection("Walls", mixed, 1, aQuadAndTriangles);
    }
    OpenedFile const file = opened();
    ASSERT_EQ(file.parts.size(), 1U);
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1, 2, 3, 4, 5, 6, 4, 6, 7}));
    EXPECT_EQ(file.warnings(), Names());
}

TEST_F(Cgns, PolygonsAloneAreRead)
{
    {
        CgnsFile const file(path_, CG_FILE_HDF5, 2);
        file.addSection("Some", faces, 1, {{1, 2, 3, 4}, {5, 6, 7, 8}});
        file.addSection("More", faces, 3, {{1, 2, 6, 5}});
    }
    OpenedFile const file = opened();
    EXPECT_EQ(file.parts[0].connectivity, (Rows{0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 5, 4}));
    EXPECT_EQ(file.warnings(), Names());
}

TEST_F(Cgns, CellsThatVtkWouldLoseAreRefused)
{
    {
        CgnsFile const file(path_);
        file.addSection("Walls", mixed, 1, aQuadAndTriangles);
        file.addCube(4);
    }
    EXPECT_EQ(OpenedFile::complaint(FileKind::Cgns, path_),
              "VTK would leave out the cells of the section 'Cube 4', which are not numbered in "
              "front of all other elements.");
}

TEST_F(Cgns, PyramidsThatVtkHasNoCellForAreRefused)
{
    auto const complaint = [this](CGNS_ENUMT(ElementType_t) type, Numbers const& nodes) {
        CgnsFile(path_).addSection("Pyramid", type, 1, 1, nodes);
        return OpenedFile::complaint(FileKind::Cgns, path_);
    };
    EXPECT_EQ(complaint(CGNS_ENUMV(PYRA_13), {1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 5}),
              "A model cannot hold 1 element of the type empty cell; --skip-unknown leaves them "
              "out.");
    EXPECT_EQ(complaint(CGNS_ENUMV(PYRA_14), {1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 5, 6}),
              "Cell 0 of 'Zone one' has 14 points, too many or too few for its type.");
}

/// Sections of cells and of elements on boundaries, in the order in which they are in the file.
class OrderOfSections : public Cgns
{
protected:
    void write(std::vector<int> const& order) const
    {
        CgnsFile const file(path_, CG_FILE_HDF5, 2);
        for (int const first : order) {
            if (first == 1)
                file.addCube();
            else if (first == 2)
                file.addSection("Tetrahedron", CGNS_ENUMV(TETRA_4), 2, 1, {8, 7, 6, 1});
            else
                file.addSection("Walls", quads, first, 2, {1, 2, 3, 4, 5, 6, 7, 8});
        }
    }
};

TEST_F(OrderOfSections, DoesNotMatterWhereCellsComeFirst)
{
    for (std::vector<int> const& order : {std::vector<int>{1, 2, 3}, std::vector<int>{2, 1, 3}}) {
        write(order);
        EXPECT_EQ(opened().parts[0].connectivity, (Rows{0, 1, 2, 3, 4, 5, 6, 7, 7, 6, 5, 0}));
    }
}

TEST_F(OrderOfSections, IsRefusedWhereVtkWouldMixThemUp)
{
    for (std::vector<int> const& order :
         {std::vector<int>{1, 3, 2}, std::vector<int>{3, 1, 2}, std::vector<int>{2, 3, 1}}) {
        write(order);
        EXPECT_EQ(OpenedFile::complaint(FileKind::Cgns, path_),
                  "VTK would mix up the sections of cells, because one of other elements stands in "
                  "front of them.");
    }
}

TEST_F(Cgns, OneSectionOfCellsMayStandBehindBoundaries)
{
    {
        CgnsFile const file(path_);
        file.addSection("Walls", quads, 2, 2, {1, 2, 3, 4, 5, 6, 7, 8});
        file.addCube();
    }
    EXPECT_EQ(opened().parts[0].connectivity, cube);
}

} // namespace
