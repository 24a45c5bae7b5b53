// VTK reads the same files with a library of its own, and puts nodes in order by itself.

#include "ExodusFile.h"
#include "Opened.h"

#include <support/Folder.h>

#include <exchange/Translation.h>
#include <export/Export.h>

#include <gtest/gtest.h>

#include <vtkCell.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkExodusIIReader.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;
using Points = std::vector<std::array<double, 3>>;

/// The element blocks of a file as VTK reads them, at the time of the given step.
std::vector<vtkSmartPointer<vtkUnstructuredGrid>> readWithVtk(std::filesystem::path const& path,
                                                              int step = 0)
{
    vtkNew<vtkExodusIIReader> reader;
    reader->SetFileName(path.c_str());
    reader->UpdateInformation();
    reader->SetAllArrayStatus(vtkExodusIIReader::NODAL, 1);
    reader->SetAllArrayStatus(vtkExodusIIReader::ELEM_BLOCK, 1);
    reader->SetApplyDisplacements(0);
    reader->SetTimeStep(step);
    reader->Update();
    auto* const blocks = vtkMultiBlockDataSet::SafeDownCast(reader->GetOutput()->GetBlock(0));
    std::vector<vtkSmartPointer<vtkUnstructuredGrid>> grids;
    for (unsigned int i = 0; i < blocks->GetNumberOfBlocks(); ++i)
        grids.emplace_back(vtkUnstructuredGrid::SafeDownCast(blocks->GetBlock(i)));
    return grids;
}

Points nodesOf(vtkUnstructuredGrid& grid, vtkIdType element)
{
    Points points;
    vtkCell* const cell = grid.GetCell(element);
    for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i) {
        std::array<double, 3> point{};
        grid.GetPoint(cell->GetPointId(static_cast<int>(i)), point.data());
        points.push_back(point);
    }
    return points;
}

Points nodesOf(Exchange::Part const& part, std::size_t element)
{
    Points points;
    for (std::uint64_t i = part.offsets[element]; i < part.offsets[element + 1]; ++i) {
        std::size_t const first = 3 * std::size_t(part.connectivity[i]);
        points.push_back(
            {part.coordinates[first], part.coordinates[first + 1], part.coordinates[first + 2]});
    }
    return points;
}

class ComparisonWithVtk : public testing::Test
{
protected:
    void writeElement(std::string const& type, std::int64_t nodes)
    {
        ExodusFile file(path_, parameters(nodes, 1, 1));
        file.coordinates(counting(nodes, 1), counting(nodes, 0, 0.5), counting(nodes, 0, 0.25));
        file.block(1, type, nodes, numbersFromOne(nodes));
    }

    Support::Folder const folder_;
    std::filesystem::path const path_ = folder_.path("in.exo");
};

/// VTK makes other elements of the types that are not among these, or leaves nodes of them out.
TEST_F(ComparisonWithVtk, NodesOfEveryTypeAreInTheSameOrder)
{
    std::vector<std::pair<std::string, std::int64_t>> const types = {
        {"SPHERE", 1}, {"BAR", 2},     {"BEAM", 3},     {"TRI", 3},   {"TRI", 6},    {"QUAD", 4},
        {"QUAD", 8},   {"QUAD", 9},    {"SHELL", 4},    {"SHELL", 8}, {"TETRA", 4},  {"TETRA", 10},
        {"TETRA", 15}, {"PYRAMID", 5}, {"PYRAMID", 13}, {"WEDGE", 6}, {"WEDGE", 15}, {"WEDGE", 18},
        {"WEDGE", 21}, {"HEX", 8},     {"HEX", 20},     {"HEX", 27}};
    for (auto const& [type, count] : types) {
        writeElement(type, count);
        auto const grids = readWithVtk(path_);
        ASSERT_EQ(grids.size(), 1u) << type << count;
        ASSERT_NE(grids[0], nullptr) << type << count;
        ASSERT_EQ(grids[0]->GetNumberOfCells(), 1) << type << count;
        Opened const opened(path_);
        EXPECT_EQ(nodesOf(opened.parts.at(0), 0), nodesOf(*grids[0], 0))
            << type << count << ", a cell of the type " << grids[0]->GetCellType(0);
    }
}

TEST_F(ComparisonWithVtk, ResultsOfEveryStepAreTheSame)
{
    {
        ExodusFile file(path_, parameters(6, 2, 1));
        file.coordinates(counting(6), counting(6, 1), counting(6, 2));
        file.block(1, "TRI", 3, {1, 3, 5, 6, 4, 2});
        file.variables(EX_NODAL, {"T", "vel_x", "vel_y", "vel_z"});
        file.variables(EX_ELEM_BLOCK, {"E"});
        for (int step = 1; step <= 2; ++step) {
            file.time(step, step);
            for (int variable = 1; variable <= 4; ++variable)
                file.variable(step, EX_NODAL, variable, 1, counting(6, 100 * step + 10 * variable));
            file.variable(step, EX_ELEM_BLOCK, 1, 1, {step + 0.25, step + 0.5});
        }
    }
    Opened const opened(path_);
    for (int step = 0; step < 2; ++step) {
        auto const grids = readWithVtk(path_, step);
        ASSERT_EQ(grids.size(), 1u);
        auto const where = static_cast<std::size_t>(step);
        Values const cells = opened.values<double>(where, "E", 0);
        vtkDataArray* const ofCells = grids[0]->GetCellData()->GetArray("E");
        ASSERT_NE(ofCells, nullptr);
        for (std::size_t i = 0; i < cells.size(); ++i)
            EXPECT_EQ(cells[i], ofCells->GetComponent(static_cast<vtkIdType>(i), 0));
        // VTK has its nodes in another order: they are found by their coordinates.
        Values const velocity = opened.values<double>(where, "vel", 0);
        vtkDataArray* const ofPoints = grids[0]->GetPointData()->GetArray("vel_");
        ASSERT_NE(ofPoints, nullptr);
        ASSERT_EQ(grids[0]->GetNumberOfPoints(), 6);
        for (vtkIdType point = 0; point < 6; ++point) {
            auto const row = static_cast<std::size_t>(grids[0]->GetPoint(point)[0]);
            for (int axis = 0; axis < 3; ++axis)
                EXPECT_EQ(velocity[3 * row + static_cast<std::size_t>(axis)],
                          ofPoints->GetComponent(point, axis));
        }
    }
}

TEST_F(ComparisonWithVtk, ModelsComeBackAsGridsOfVtkWithTheSameNodesAndValues)
{
    {
        ExodusFile::Options options;
        options.bytesOfReal = 4;
        ExodusFile file(path_, parameters(20, 1, 1), options);
        file.coordinates(counting(20, 1), counting(20, 0, 0.5), counting(20, 0, 0.25));
        file.block(1, "HEX", 20, numbersFromOne(20));
        file.variables(EX_NODAL, {"T"});
        file.time(1, 1);
        file.variable(1, EX_NODAL, 1, 1, counting(20, 0.1, 0.7));
    }
    auto const model = folder_.path("out.mox");
    auto const grid = folder_.path("out.vtu");
    Exchange::Report report;
    Exchange::translate(path_, Exodus::open, model, {}, report);
    Export::exportModel(model.string(), grid.string());
    vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(grid.c_str());
    reader->Update();
    vtkUnstructuredGrid& back = *reader->GetOutput();
    auto const original = readWithVtk(path_).at(0);
    ASSERT_EQ(back.GetNumberOfCells(), 1);
    EXPECT_EQ(back.GetCellType(0), original->GetCellType(0));
    EXPECT_EQ(nodesOf(back, 0), nodesOf(*original, 0));
    vtkDataArray* const values = back.GetPointData()->GetArray("T");
    ASSERT_NE(values, nullptr);
    for (vtkIdType point = 0; point < 20; ++point)
        EXPECT_EQ(values->GetComponent(point, 0),
                  static_cast<float>(0.1 + 0.7 * (back.GetPoint(point)[0] - 1)));
}

} // namespace
