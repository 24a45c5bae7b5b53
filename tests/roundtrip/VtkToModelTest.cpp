// Files of VTK become models that hold, value by value, what VTK's own readers read.

#include "GridComparison.h"

#include "support/Folder.h"
#include "support/VtkGrids.h"

#include <mox/commands/TranslateCommand.h>

#include <vtkCompositeDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkIntArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkUnsignedCharArray.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLMultiBlockDataReader.h>
#include <vtkXMLMultiBlockDataWriter.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <sstream>

namespace {

using namespace Support;
using Names = std::vector<std::string>;

template <typename Reader>
vtkSmartPointer<Reader> reading(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<Reader>::New();
    reader->SetFileName(path.c_str());
    reader->Update();
    return reader;
}

class VtkToModel : public ::testing::Test
{
protected:
    int translate(std::filesystem::path const& input, bool skipUnknown = false)
    {
        TranslateArguments arguments;
        arguments.input = input.string();
        arguments.output = output().string();
        arguments.skipUnknown = skipUnknown;
        std::ostringstream out;
        std::ostringstream err;
        int const status = translateFile(arguments, out, err);
        said_ = err.str();
        return status;
    }

    ModelFile& modelOf(std::filesystem::path const& input)
    {
        EXPECT_EQ(translate(input), 0) << said_;
        model_ = std::make_unique<ModelFile>(output());
        return *model_;
    }

    std::filesystem::path write(vtkUnstructuredGrid* grid, std::string const& name = "in.vtu") const
    {
        return writeWith<vtkXMLUnstructuredGridWriter>(folder_.path(name), grid);
    }

    std::filesystem::path output() const { return folder_.path("out.mox"); }

    Folder folder_;
    std::string said_;
    std::unique_ptr<ModelFile> model_;
};

/// Arrays of many kinds on points and cells.
void addFields(vtkUnstructuredGrid& grid)
{
    auto const fill = [](vtkDataArray& array, vtkIdType rows, double factor) {
        array.SetNumberOfTuples(rows);
        for (vtkIdType i = 0; i < rows; ++i)
            for (int c = 0; c < array.GetNumberOfComponents(); ++c)
                array.SetComponent(i, c, static_cast<double>(i + 1) * factor + c);
    };
    struct Kind
    {
        char const* name;
        int components;
        double factor;
    };
    for (vtkFieldData* const data :
         std::initializer_list<vtkFieldData*>{grid.GetPointData(), grid.GetCellData()}) {
        bool const isOnPoints = data == grid.GetPointData();
        vtkIdType const rows = isOnPoints ? grid.GetNumberOfPoints() : grid.GetNumberOfCells();
        std::string const where = isOnPoints ? " of points" : " / of cells";
        for (Kind const& kind : {Kind{"scalar", 1, 0.1}, Kind{"Vektor ä", 3, -1e-3},
                                 Kind{"tensor", 6, 1e10}, Kind{"pair", 2, 1 / 3.0}}) {
            vtkNew<vtkDoubleArray> array;
            array->SetName((kind.name + where).c_str());
            array->SetNumberOfComponents(kind.components);
            fill(*array, rows, kind.factor);
            data->AddArray(array);
        }
        vtkNew<vtkUnsignedCharArray> bytes;
        bytes->SetName(("bytes" + where).c_str());
        fill(*bytes, rows, 1);
        data->AddArray(bytes);
        vtkNew<vtkIntArray> negative;
        negative->SetName(("negative" + where).c_str());
        fill(*negative, rows, -1);
        data->AddArray(negative);
        vtkNew<vtkFloatArray> gaps;
        gaps->SetName(("gaps" + where).c_str());
        fill(*gaps, rows, 1);
        gaps->SetComponent(0, 0, std::numeric_limits<double>::quiet_NaN());
        gaps->SetComponent(rows - 1, 0, std::numeric_limits<double>::infinity());
        data->AddArray(gaps);
    }
}

TEST_F(VtkToModel, EveryTypeOfElementArrivesWithItsValues)
{
    struct Type
    {
        int cell;
        int points;
    };
    for (Type const& type : {Type{VTK_VERTEX, 1},
                             Type{VTK_LINE, 2},
                             Type{VTK_TRIANGLE, 3},
                             Type{VTK_PIXEL, 4},
                             Type{VTK_QUAD, 4},
                             Type{VTK_TETRA, 4},
                             Type{VTK_VOXEL, 8},
                             Type{VTK_HEXAHEDRON, 8},
                             Type{VTK_WEDGE, 6},
                             Type{VTK_PYRAMID, 5},
                             Type{VTK_QUADRATIC_EDGE, 3},
                             Type{VTK_QUADRATIC_TRIANGLE, 6},
                             Type{VTK_QUADRATIC_QUAD, 8},
                             Type{VTK_QUADRATIC_TETRA, 10},
                             Type{VTK_QUADRATIC_HEXAHEDRON, 20},
                             Type{VTK_QUADRATIC_WEDGE, 15},
                             Type{VTK_QUADRATIC_PYRAMID, 13},
                             Type{VTK_BIQUADRATIC_QUAD, 9},
                             Type{VTK_TRIQUADRATIC_HEXAHEDRON, 27},
                             Type{VTK_BIQUADRATIC_QUADRATIC_WEDGE, 18},
                             Type{VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, 24},
                             Type{VTK_BIQUADRATIC_TRIANGLE, 7},
                             Type{VTK_CUBIC_LINE, 4},
                             Type{VTK_TRIQUADRATIC_PYRAMID, 19},
                             Type{VTK_LAGRANGE_HEXAHEDRON, 27},
                             Type{VTK_LAGRANGE_TETRAHEDRON, 10}}) {
        auto const grid = gridOf(type.points, {cellOver(type.cell, type.points)});
        addFields(*grid);
        std::filesystem::path const path = write(grid);
        auto const reader = reading<vtkXMLUnstructuredGridReader>(path);
        std::filesystem::remove(output());
        ModelFile& model = modelOf(path);
        ASSERT_EQ(model.shapes(), (Names{"in/Mesh"})) << type.cell;
        expectSameMesh(*reader->GetOutput(), model, {"Mesh"});
        expectSameFields(*reader->GetOutput(), model, {"Mesh"});
    }
}

TEST_F(VtkToModel, TypesThatAnAttributeTellsArriveInShapesOfTheirOwn)
{
    struct Type
    {
        int cell;
        int points;
        char const* name;
    };
    for (Type const& type :
         {Type{VTK_POLY_VERTEX, 4, "Polyvertex"}, Type{VTK_POLY_LINE, 4, "Polyline"},
          Type{VTK_POLYGON, 5, "Polygon"}, Type{VTK_TRIANGLE_STRIP, 5, "Triangle strip"},
          Type{VTK_QUADRATIC_POLYGON, 10, "Quadratic polygon"},
          Type{VTK_QUADRATIC_LINEAR_QUAD, 6, "Quadratic linear quad"},
          Type{VTK_QUADRATIC_LINEAR_WEDGE, 12, "Quadratic linear wedge"},
          Type{VTK_PENTAGONAL_PRISM, 10, "Pentagonal prism"},
          Type{VTK_HEXAGONAL_PRISM, 12, "Hexagonal prism"}}) {
        auto const grid = gridOf(type.points, {cellOver(type.cell, type.points)});
        addFields(*grid);
        std::filesystem::path const path = write(grid);
        auto const reader = reading<vtkXMLUnstructuredGridReader>(path);
        std::filesystem::remove(output());
        ModelFile& model = modelOf(path);
        std::string const shape = std::string("Mesh ") + type.name;
        ASSERT_EQ(model.shapes(), (Names{"in/" + shape}));
        EXPECT_EQ(ModelFile::attribute<std::string>(model.get({shape}, "Connectivity").attributes,
                                                    "ElementType"),
                  type.name);
        expectSameMesh(*reader->GetOutput(), model, {shape});
        expectSameFields(*reader->GetOutput(), model, {shape});
    }
}

TEST_F(VtkToModel, AMixedMeshArrivesWhole)
{
    auto const grid =
        gridOf(30, {cellOver(VTK_QUADRATIC_HEXAHEDRON, 20), Cell{VTK_TRIANGLE, {3, 2, 1}},
                    Cell{VTK_LINE, {22, 21}}, Cell{VTK_POLYGON, {1, 2, 3, 4, 23}},
                    Cell{VTK_TETRA, {20, 21, 22, 23}}, Cell{VTK_QUAD, {5, 6, 7, 24}},
                    Cell{VTK_VERTEX, {25}}, Cell{VTK_POLYGON, {9, 8, 7}}});
    addFields(*grid);
    std::filesystem::path const path = write(grid);
    auto const reader = reading<vtkXMLUnstructuredGridReader>(path);
    ModelFile& model = modelOf(path);
    Names const shapes = {"Mesh 1D", "Mesh 2D", "Mesh 3D", "Mesh Polygon",
                          "Mesh nodes without elements"};
    EXPECT_EQ(model.shapes(), (Names{"in/Mesh 1D", "in/Mesh 2D", "in/Mesh 3D", "in/Mesh Polygon",
                                     "in/Mesh nodes without elements"}));
    expectSameMesh(*reader->GetOutput(), model, shapes);
    expectSameFields(*reader->GetOutput(), model, shapes);
}

TEST_F(VtkToModel, AnImageArrivesAsHexahedra)
{
    vtkNew<vtkImageData> image;
    image->SetDimensions(3, 4, 2);
    image->SetSpacing(0.1, 0.2, 0.3);
    std::filesystem::path const path =
        writeWith<vtkXMLImageDataWriter>(folder_.path("in.vti"), image);
    auto const reader = reading<vtkXMLImageDataReader>(path);
    expectSameMesh(*reader->GetOutput(), modelOf(path), {"Mesh"});
}

TEST_F(VtkToModel, BlocksArriveBelowTheirGroups)
{
    auto const first = gridOf(8, {cellOver(VTK_HEXAHEDRON, 8)});
    addFields(*first);
    vtkNew<vtkMultiBlockDataSet> inner;
    inner->SetBlock(0, gridOf(3, {cellOver(VTK_TRIANGLE, 3)}, 5));
    inner->GetMetaData(0U)->Set(vtkCompositeDataSet::NAME(), "Fläche / oben");
    vtkNew<vtkMultiBlockDataSet> blocks;
    blocks->SetBlock(0, first);
    blocks->GetMetaData(0U)->Set(vtkCompositeDataSet::NAME(), "A block");
    blocks->SetBlock(1, inner);
    blocks->GetMetaData(1U)->Set(vtkCompositeDataSet::NAME(), "Gruppe \\ 1");
    std::filesystem::path const path =
        writeWith<vtkXMLMultiBlockDataWriter>(folder_.path("in.vtm"), blocks);
    auto const reader = reading<vtkXMLMultiBlockDataReader>(path);
    auto* const read = vtkMultiBlockDataSet::SafeDownCast(reader->GetOutput());
    ModelFile& model = modelOf(path);
    EXPECT_EQ(model.shapes(), (Names{"in/A block", "in/Gruppe \\ 1/Fläche / oben"}));
    expectSameMesh(*vtkDataSet::SafeDownCast(read->GetBlock(0)), model, {"A block"});
    expectSameFields(*vtkDataSet::SafeDownCast(read->GetBlock(0)), model, {"A block"});
    auto* const readInner = vtkMultiBlockDataSet::SafeDownCast(read->GetBlock(1));
    expectSameMesh(*vtkDataSet::SafeDownCast(readInner->GetBlock(0)), model, {"Fläche / oben"},
                   {"Gruppe \\ 1"});
}

TEST_F(VtkToModel, StepsOfASeriesArriveWithTheirTimes)
{
    std::string entries;
    for (int i = 0; i < 3; ++i) {
        auto const grid = gridOf(8, {cellOver(VTK_HEXAHEDRON, 8)});
        grid->GetPointData()->AddArray(
            arrayOf<vtkDoubleArray>("T", 1, {0.1 * i, 1, 2, 3, 4, 5, 6, 7}));
        std::string const name = "s" + std::to_string(i) + ".vtu";
        write(grid, name);
        entries += "<DataSet timestep=\"0." + std::to_string(i) + "\" file=\"" + name + "\"/>";
    }
    ModelFile& model = modelOf(folder_.write("in.pvd", "<VTKFile type=\"Collection\"><Collection>" +
                                                           entries + "</Collection></VTKFile>"));
    for (int i = 0; i < 3; ++i) {
        auto const reader =
            reading<vtkXMLUnstructuredGridReader>(folder_.path("s" + std::to_string(i) + ".vtu"));
        std::string const step = "Step " + std::to_string(i + 1);
        expectSameFields(*reader->GetOutput(), model, {"Mesh"}, step);
        EXPECT_EQ(ModelFile::attribute<float>(model.get({"Mesh"}, "T", step).attributes, "Time"),
                  0.1F * static_cast<float>(i));
    }
}

TEST_F(VtkToModel, WhatGetsLostIsToldInALineEach)
{
    auto const grid = gridOf(8, {cellOver(VTK_TETRA, 4), cellOver(VTK_CONVEX_POINT_SET, 8)});
    std::filesystem::path const path = write(grid);
    EXPECT_EQ(translate(path), 1);
    EXPECT_EQ(said_, "mox translate: " + path.string() +
                         ": A model cannot hold 1 element of the type convex point set; "
                         "--skip-unknown leaves them out.\n");
    EXPECT_FALSE(std::filesystem::exists(output()));
    EXPECT_EQ(translate(path, true), 0);
    EXPECT_EQ(said_.find("mox translate: warning: 1 element of the type convex point set was left "
                         "out.\nmox translate: warning: "),
              0U)
        << said_;
    EXPECT_NE(said_.find("rounded to single precision"), std::string::npos) << said_;
}

} // namespace
