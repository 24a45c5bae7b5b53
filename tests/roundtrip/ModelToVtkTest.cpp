// Files of VTK that become models and files of VTK again hold what they held before, in single
// precision.

#include "support/Folder.h"
#include "support/ModelFile.h"
#include "support/VtkGrids.h"

#include <export/Export.h>
#include <mox/commands/TranslateCommand.h>

#include <vtkCompositeDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkIdList.h>
#include <vtkInformation.h>
#include <vtkIntArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkUnsignedIntArray.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLMultiBlockDataReader.h>
#include <vtkXMLMultiBlockDataWriter.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkXMLUtilities.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <sstream>

namespace {

using Mox::TranslateArguments;
using Mox::translateFile;

using namespace Support;

template <typename Reader>
vtkSmartPointer<Reader> reading(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<Reader>::New();
    reader->SetFileName(path.c_str());
    reader->Update();
    return reader;
}

/// The points of a cell; those of pixels and voxels as quadrangles and hexahedra have them.
std::vector<vtkIdType> pointsOf(vtkDataSet& grid, vtkIdType cell)
{
    vtkNew<vtkIdList> list;
    grid.GetCellPoints(cell, list);
    std::vector<vtkIdType> points(list->begin(), list->end());
    int const type = grid.GetCellType(cell);
    if (type == VTK_PIXEL || type == VTK_VOXEL)
        for (std::size_t i = 2; i < points.size(); i += 4)
            std::swap(points[i], points[i + 1]);
    return points;
}

/// The type that a cell has after a model told it by its nodes.
int plainType(int type, vtkIdType points)
{
    static std::map<std::pair<int, vtkIdType>, int> const plain = {
        {{VTK_PIXEL, 4}, VTK_QUAD},
        {{VTK_VOXEL, 8}, VTK_HEXAHEDRON},
        {{VTK_LAGRANGE_HEXAHEDRON, 27}, VTK_TRIQUADRATIC_HEXAHEDRON},
        {{VTK_LAGRANGE_TETRAHEDRON, 10}, VTK_QUADRATIC_TETRA},
    };
    auto const found = plain.find({type, points});
    return found == plain.end() ? type : found->second;
}

/// For each row, which row of the original it was.
std::vector<vtkIdType> origins(vtkFieldData& data, char const* name)
{
    vtkDataArray* const ids = data.GetArray(name);
    std::vector<vtkIdType> rows;
    for (vtkIdType i = 0; ids != nullptr && i < ids->GetNumberOfTuples(); ++i)
        rows.push_back(static_cast<vtkIdType>(ids->GetComponent(i, 0)) - 1);
    return rows;
}

bool isSame(float a, float b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

void expectSameArrays(vtkFieldData& original, vtkFieldData& arrived,
                      std::vector<vtkIdType> const& rows)
{
    for (int i = 0; i < original.GetNumberOfArrays(); ++i) {
        vtkDataArray& expected = *original.GetArray(i);
        vtkDataArray* const actual = arrived.GetArray(expected.GetName());
        ASSERT_NE(actual, nullptr) << expected.GetName();
        ASSERT_EQ(actual->GetNumberOfComponents(), expected.GetNumberOfComponents());
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (int c = 0; c < expected.GetNumberOfComponents(); ++c)
                EXPECT_TRUE(isSame(static_cast<float>(expected.GetComponent(rows[row], c)),
                                   static_cast<float>(actual->GetComponent(vtkIdType(row), c))))
                    << expected.GetName() << " row " << row;
    }
}

void expectSameGrid(vtkDataSet& original, vtkDataSet& arrived)
{
    std::vector<vtkIdType> const points = origins(*arrived.GetPointData(), "Node Ids");
    std::vector<vtkIdType> const cells = origins(*arrived.GetCellData(), "Element IDs");
    ASSERT_EQ(points.size(), std::size_t(arrived.GetNumberOfPoints()));
    ASSERT_EQ(arrived.GetNumberOfCells(), original.GetNumberOfCells());
    for (std::size_t i = 0; i < points.size(); ++i) {
        double expected[3];
        double actual[3];
        original.GetPoint(points[i], expected);
        arrived.GetPoint(vtkIdType(i), actual);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(static_cast<float>(expected[axis]), actual[axis]);
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::vector<vtkIdType> const expected = pointsOf(original, cells[i]);
        EXPECT_EQ(arrived.GetCellType(vtkIdType(i)),
                  plainType(original.GetCellType(cells[i]), vtkIdType(expected.size())));
        std::vector<vtkIdType> nodes;
        for (vtkIdType const point : pointsOf(arrived, vtkIdType(i)))
            nodes.push_back(points.at(std::size_t(point)));
        EXPECT_EQ(nodes, expected) << "cell " << cells[i];
    }
    expectSameArrays(*original.GetPointData(), *arrived.GetPointData(), points);
    expectSameArrays(*original.GetCellData(), *arrived.GetCellData(), cells);
}

void addFields(vtkUnstructuredGrid& grid)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    vtkIdType const points = grid.GetNumberOfPoints();
    vtkIdType const cells = grid.GetNumberOfCells();
    vtkNew<vtkDoubleArray> vectors;
    vectors->SetName("Vektor ä / 1");
    vectors->SetNumberOfComponents(3);
    for (vtkIdType i = 0; i < points; ++i)
        vectors->InsertNextTuple3(0.1 * static_cast<double>(i), -1, 1e20);
    grid.GetPointData()->AddArray(vectors);
    vtkNew<vtkFloatArray> tensors;
    tensors->SetName("tensor of cells");
    tensors->SetNumberOfComponents(6);
    for (vtkIdType i = 0; i < cells; ++i)
        tensors->InsertNextTuple6(1, 2, static_cast<double>(i), 4, nan, 6);
    grid.GetCellData()->AddArray(tensors);
    vtkNew<vtkUnsignedIntArray> numbers;
    numbers->SetName("numbers");
    for (vtkIdType i = 0; i < cells; ++i)
        numbers->InsertNextValue(16777216U + static_cast<unsigned int>(i));
    grid.GetCellData()->AddArray(numbers);
}

vtkDataObject* blockNamed(vtkMultiBlockDataSet& blocks, std::string const& name)
{
    for (unsigned int i = 0; i < blocks.GetNumberOfBlocks(); ++i)
        if (name == blocks.GetMetaData(i)->Get(vtkCompositeDataSet::NAME()))
            return blocks.GetBlock(i);
    return nullptr;
}

/// Names of the steps of a model, in the order in which they come up.
std::vector<std::string> stepsOf(ModelFile& file)
{
    std::vector<std::string> steps;
    for (MoxRead::Node const& node : file.model().nodes())
        if (node.geometry() != nullptr)
            for (MoxRead::Variable const& variable : node.geometry()->variables)
                if (variable.hasStep() &&
                    std::find(steps.begin(), steps.end(), variable.stepName()) == steps.end())
                    steps.push_back(variable.stepName());
    return steps;
}

class ModelToVtk : public ::testing::Test
{
protected:
    std::filesystem::path write(vtkUnstructuredGrid* grid, std::string const& name = "in.vtu") const
    {
        return writeWith<vtkXMLUnstructuredGridWriter>(folder_.path(name), grid);
    }

    int translate(std::filesystem::path const& input, bool skipUnknown, std::string& said) const
    {
        TranslateArguments arguments;
        arguments.input = input.string();
        arguments.output = folder_.path("model.mox").string();
        arguments.overwrite = true;
        arguments.skipUnknown = skipUnknown;
        std::ostringstream out;
        std::ostringstream err;
        int const status = translateFile(arguments, out, err);
        said = err.str();
        return status;
    }

    /// From VTK into a model and back.
    std::filesystem::path through(std::filesystem::path const& input,
                                  std::string const& output) const
    {
        std::string said;
        EXPECT_EQ(translate(input, false, said), 0) << said;
        Export::ExportOptions options;
        options.overwrite = true;
        Export::exportModel(folder_.path("model.mox").string(), folder_.path(output).string(),
                            options);
        return folder_.path(output);
    }

    void expectThrough(vtkUnstructuredGrid* grid) const
    {
        auto const original = reading<vtkXMLUnstructuredGridReader>(write(grid));
        auto const arrived =
            reading<vtkXMLUnstructuredGridReader>(through(folder_.path("in.vtu"), "out.vtu"));
        expectSameGrid(*original->GetOutput(), *arrived->GetOutput());
    }

    Folder folder_;
};

TEST_F(ModelToVtk, EveryTypeOfCellComesBack)
{
    for (Cell const& cell : {cellOver(VTK_VERTEX, 1),
                             cellOver(VTK_LINE, 2),
                             cellOver(VTK_TRIANGLE, 3),
                             cellOver(VTK_PIXEL, 4),
                             cellOver(VTK_QUAD, 4),
                             cellOver(VTK_TETRA, 4),
                             cellOver(VTK_VOXEL, 8),
                             cellOver(VTK_HEXAHEDRON, 8),
                             cellOver(VTK_WEDGE, 6),
                             cellOver(VTK_PYRAMID, 5),
                             cellOver(VTK_QUADRATIC_EDGE, 3),
                             cellOver(VTK_QUADRATIC_TRIANGLE, 6),
                             cellOver(VTK_QUADRATIC_QUAD, 8),
                             cellOver(VTK_QUADRATIC_TETRA, 10),
                             cellOver(VTK_QUADRATIC_HEXAHEDRON, 20),
                             cellOver(VTK_QUADRATIC_WEDGE, 15),
                             cellOver(VTK_QUADRATIC_PYRAMID, 13),
                             cellOver(VTK_BIQUADRATIC_QUAD, 9),
                             cellOver(VTK_TRIQUADRATIC_HEXAHEDRON, 27),
                             cellOver(VTK_BIQUADRATIC_QUADRATIC_WEDGE, 18),
                             cellOver(VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, 24),
                             cellOver(VTK_BIQUADRATIC_TRIANGLE, 7),
                             cellOver(VTK_CUBIC_LINE, 4),
                             cellOver(VTK_TRIQUADRATIC_PYRAMID, 19),
                             cellOver(VTK_LAGRANGE_HEXAHEDRON, 27),
                             cellOver(VTK_LAGRANGE_TETRAHEDRON, 10),
                             cellOver(VTK_POLY_VERTEX, 4),
                             cellOver(VTK_POLY_LINE, 4),
                             cellOver(VTK_POLYGON, 5),
                             cellOver(VTK_TRIANGLE_STRIP, 5),
                             cellOver(VTK_QUADRATIC_POLYGON, 10),
                             cellOver(VTK_QUADRATIC_LINEAR_QUAD, 6),
                             cellOver(VTK_QUADRATIC_LINEAR_WEDGE, 12),
                             cellOver(VTK_PENTAGONAL_PRISM, 10),
                             cellOver(VTK_HEXAGONAL_PRISM, 12)}) {
        SCOPED_TRACE(cell.type);
        auto const grid = gridOf(static_cast<int>(cell.points.size()), {cell});
        addFields(*grid);
        expectThrough(grid);
    }
}

TEST_F(ModelToVtk, AMixedMeshOfBothOrdersComesBack)
{
    auto const grid =
        gridOf(26, {cellOver(VTK_QUADRATIC_HEXAHEDRON, 20), Cell{VTK_TRIANGLE, {3, 2, 1}},
                    Cell{VTK_LINE, {22, 21}}, Cell{VTK_POLYGON, {1, 2, 3, 4, 23}},
                    Cell{VTK_TETRA, {20, 21, 22, 23}}, Cell{VTK_QUAD, {5, 6, 7, 24}},
                    Cell{VTK_VERTEX, {25}}, Cell{VTK_POLYGON, {9, 8, 7}}});
    addFields(*grid);
    expectThrough(grid);
}

TEST_F(ModelToVtk, BlocksComeBackWithTheirNames)
{
    auto const first = gridOf(8, {cellOver(VTK_HEXAHEDRON, 8)});
    addFields(*first);
    vtkNew<vtkMultiBlockDataSet> inner;
    inner->SetBlock(0, gridOf(3, {cellOver(VTK_TRIANGLE, 3)}, 5));
    inner->GetMetaData(0U)->Set(vtkCompositeDataSet::NAME(), "Fläche / oben");
    vtkNew<vtkMultiBlockDataSet> blocks;
    blocks->SetBlock(0, first);
    blocks->GetMetaData(0U)->Set(vtkCompositeDataSet::NAME(), "A <block>");
    blocks->SetBlock(1, inner);
    blocks->GetMetaData(1U)->Set(vtkCompositeDataSet::NAME(), "Gruppe \\ 1");
    std::filesystem::path const input =
        writeWith<vtkXMLMultiBlockDataWriter>(folder_.path("in.vtm"), blocks);
    // The writer itself leaves empty blocks out.
    std::string text = contentOf(input);
    text.insert(text.find("</Block>"), "<DataSet index=\"1\" name=\"leer\"/>");
    folder_.write("in.vtm", text);
    auto const reader = reading<vtkXMLMultiBlockDataReader>(through(input, "out.vtm"));
    auto* const root = vtkMultiBlockDataSet::SafeDownCast(reader->GetOutput());
    vtkDataObject* const arrived = blockNamed(*root, "A <block>");
    ASSERT_NE(arrived, nullptr);
    expectSameGrid(*first, *vtkDataSet::SafeDownCast(arrived));
    auto* const group = vtkMultiBlockDataSet::SafeDownCast(blockNamed(*root, "Gruppe \\ 1"));
    ASSERT_NE(group, nullptr);
    vtkDataObject* const leaf = blockNamed(*group, "Fläche / oben");
    ASSERT_NE(leaf, nullptr);
    expectSameGrid(*vtkDataSet::SafeDownCast(inner->GetBlock(0)), *vtkDataSet::SafeDownCast(leaf));
    auto* const empty = vtkDataSet::SafeDownCast(blockNamed(*group, "leer"));
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty->GetNumberOfPoints(), 0);
}

TEST_F(ModelToVtk, StepsComeBackWithTheirTimes)
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
    std::filesystem::path const series =
        through(folder_.write("in.pvd", "<VTKFile type=\"Collection\"><Collection>" + entries +
                                            "</Collection></VTKFile>"),
                "out.pvd");
    // Through a model once more: what comes out is read like what went in.
    std::filesystem::path const again = through(series, "again.pvd");
    vtkSmartPointer<vtkXMLDataElement> const root = vtkSmartPointer<vtkXMLDataElement>::Take(
        vtkXMLUtilities::ReadElementFromFile(again.c_str()));
    vtkXMLDataElement& collection = *root->FindNestedElementWithName("Collection");
    ASSERT_EQ(collection.GetNumberOfNestedElements(), 3);
    for (int i = 0; i < 3; ++i) {
        vtkXMLDataElement& entry = *collection.GetNestedElement(i);
        EXPECT_EQ(std::stod(entry.GetAttribute("timestep")), std::stod("0." + std::to_string(i)));
        auto const original =
            reading<vtkXMLUnstructuredGridReader>(folder_.path("s" + std::to_string(i) + ".vtu"));
        auto const arrived =
            reading<vtkXMLUnstructuredGridReader>(folder_.path(entry.GetAttribute("file")));
        expectSameGrid(*original->GetOutput(), *arrived->GetOutput());
    }
}

TEST_F(ModelToVtk, StepsKeepTheirNames)
{
    std::filesystem::path const series =
        through(std::filesystem::path(EXAMPLE_DATA) / "cantilever.frd", "out.pvd");
    ModelFile original(folder_.path("model.mox"));
    std::vector<std::string> const names = stepsOf(original);
    ASSERT_EQ(names.size(), 14U);
    EXPECT_EQ(names.front(), "Step 1 Increment 1");
    through(series, "again.pvd");
    ModelFile arrived(folder_.path("model.mox"));
    EXPECT_EQ(stepsOf(arrived), names);
}

TEST_F(ModelToVtk, WhatGetsLostIsToldInALineEach)
{
    auto const grid = gridOf(8, {cellOver(VTK_TETRA, 4), cellOver(VTK_CONVEX_POINT_SET, 8)});
    std::filesystem::path const path = write(grid);
    std::string said;
    EXPECT_EQ(translate(path, false, said), 1);
    EXPECT_EQ(said, "mox translate: " + path.string() +
                        ": A model cannot hold 1 element of the type convex point set; "
                        "--skip-unknown leaves them out.\n");
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"in.vtu"});
    EXPECT_EQ(translate(path, true, said), 0);
    EXPECT_EQ(said.find("mox translate: warning: 1 element of the type convex point set was left "
                        "out.\nmox translate: warning: "),
              0U)
        << said;
    EXPECT_NE(said.find("rounded to single precision"), std::string::npos) << said;
}

} // namespace
