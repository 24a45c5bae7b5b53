// From Exodus through a model to VTK's files: what comes out is what the field's own library reads.

#include "ExodusFile.h"

#include <support/Folder.h>

#include <exchange/Translation.h>
#include <export/Export.h>
#include <read/exodus/Source.h>

#include <gtest/gtest.h>

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkCompositeDataSet.h>
#include <vtkDataArray.h>
#include <vtkIdList.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLMultiBlockDataReader.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ExodusTest;

constexpr std::int64_t nodeCount = 30;
constexpr int stepCount = 2;

/// A file as its own library reads it.
class Original
{
public:
    explicit Original(std::filesystem::path const& path)
    {
        int bytesOfDouble = sizeof(double);
        int bytesInFile = 0;
        float version = 0;
        id_ = ex_open(path.c_str(), EX_READ, &bytesOfDouble, &bytesInFile, &version);
        if (id_ < 0)
            throw std::runtime_error("the test's file can't be opened");
        ex_set_int64_status(id_, EX_ALL_INT64_API);
    }
    ~Original() { ex_close(id_); }
    Original(Original const&) = delete;
    Original& operator=(Original const&) = delete;

    Values coordinates(std::size_t axis) const
    {
        Values all[3] = {Values(nodeCount), Values(nodeCount), Values(nodeCount)};
        check(ex_get_coord(id_, all[0].data(), all[1].data(), all[2].data()));
        return all[axis];
    }

    Ids connectivity(std::int64_t block, std::size_t size) const
    {
        Ids nodes(size);
        check(ex_get_conn(id_, EX_ELEM_BLOCK, block, nodes.data(), nullptr, nullptr));
        return nodes;
    }

    Values variable(int step, ex_entity_type type, int variable, std::int64_t block,
                    std::int64_t count) const
    {
        Values values(static_cast<std::size_t>(count));
        check(ex_get_var(id_, step, type, variable, block, count, values.data()));
        return values;
    }

private:
    static void check(int status)
    {
        if (status < 0)
            throw std::runtime_error("the test's file can't be read");
    }

    int id_ = -1;
};

struct Block
{
    std::int64_t id;
    char const* type;
    std::int64_t nodesPerElement;
    std::int64_t elements;
    Ids connectivity;
    char const* name;
    char const* nameInModel;
    int cellType;
    bool hasElementVariable;
};

std::vector<Block> const& blocks()
{
    static std::vector<Block> const all = {
        {1, "HEX", 20, 1, numbersFromOne(20), "solid / \xC3\xA4 1", "solid / \xC3\xA4 1",
         VTK_QUADRATIC_HEXAHEDRON, true},
        {2, "TETRA", 4, 2, {20, 21, 22, 23, 19, 21, 23, 22}, "", "Block 2", VTK_TETRA, true},
        {3, "HEX", 8, 0, {}, "empty", "empty", VTK_HEXAHEDRON, false},
        {7, "TRI", 6, 1, {1, 2, 3, 24, 25, 26}, "skin", "skin", VTK_QUADRATIC_TRIANGLE, false},
        {9, "BAR", 2, 1, {27, 1}, "rod", "rod", VTK_LINE, true}};
    return all;
}

double const nan = std::numeric_limits<double>::quiet_NaN();

void writeVariables(ExodusFile& file, int step)
{
    Values withGap = counting(nodeCount, 0.1 * step, 0.7);
    withGap[2] = nan;
    file.variable(step, EX_NODAL, 1, 1, withGap);
    for (int variable = 2; variable <= 10; ++variable)
        file.variable(step, EX_NODAL, variable, 1,
                      counting(nodeCount, step * 100 + variable, 1 / 3.0));
    for (Block const& block : blocks())
        if (block.hasElementVariable)
            file.variable(step, EX_ELEM_BLOCK, 1, block.id,
                          counting(block.elements, step + 0.3, 0.1));
}

void writeFile(std::filesystem::path const& path)
{
    ExodusFile file(path, parameters(nodeCount, 5, static_cast<std::int64_t>(blocks().size())));
    file.coordinates(counting(nodeCount, 1), counting(nodeCount, 0, 1 / 7.0),
                     counting(nodeCount, 0, -0.3));
    for (Block const& block : blocks())
        file.block(block.id, block.type, block.nodesPerElement, block.connectivity, block.name);
    file.variables(EX_NODAL, {"T / \xC3\xA4", "vel_x", "vel_y", "vel_z", "S_XX", "S_YY", "S_ZZ",
                              "S_XY", "S_YZ", "S_ZX"});
    file.variables(EX_ELEM_BLOCK, {"E"});
    std::vector<int> table;
    for (Block const& block : blocks())
        table.push_back(block.hasElementVariable ? 1 : 0);
    file.truthTable(static_cast<int>(blocks().size()), 1, table);
    for (int step = 1; step <= stepCount; ++step) {
        file.time(step, 0.1 * step);
        writeVariables(file, step);
    }
}

bool isSame(double expected, double actual)
{
    return static_cast<float>(expected) == actual || (std::isnan(expected) && std::isnan(actual));
}

/// In the order of VTK's cells, where solids of second order have their upright edges last.
Ids inOrderOfCell(Ids const& nodes)
{
    if (nodes.size() != 20)
        return nodes;
    Ids ordered(nodes.begin(), nodes.begin() + 12);
    ordered.insert(ordered.end(), nodes.begin() + 16, nodes.end());
    ordered.insert(ordered.end(), nodes.begin() + 12, nodes.begin() + 16);
    return ordered;
}

class ExodusRoundTrip : public testing::Test
{
protected:
    vtkSmartPointer<vtkMultiBlockDataSet> arrivedStep(int step) const
    {
        vtkNew<vtkXMLMultiBlockDataReader> reader;
        std::string const name = "out/step_" + std::to_string(step) + ".vtm";
        reader->SetFileName(folder_.path(name).c_str());
        reader->Update();
        return vtkMultiBlockDataSet::SafeDownCast(reader->GetOutputDataObject(0));
    }

    /// The number that a point has in the original, from 0.
    static std::size_t nodeOf(vtkUnstructuredGrid& grid, vtkIdType point)
    {
        return static_cast<std::size_t>(
                   grid.GetPointData()->GetArray("Node Ids")->GetComponent(point, 0)) -
               1;
    }

    static void expectPoints(vtkUnstructuredGrid& grid, Original const& original)
    {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Values const expected = original.coordinates(axis);
            for (vtkIdType point = 0; point < grid.GetNumberOfPoints(); ++point)
                EXPECT_TRUE(isSame(expected.at(nodeOf(grid, point)), grid.GetPoint(point)[axis]));
        }
    }

    static void expectCells(vtkUnstructuredGrid& grid, Original const& original, Block const& block)
    {
        ASSERT_EQ(grid.GetNumberOfCells(), block.elements);
        Ids const connectivity = original.connectivity(block.id, block.connectivity.size());
        auto next = connectivity.begin();
        for (vtkIdType cell = 0; cell < block.elements; ++cell) {
            EXPECT_EQ(grid.GetCellType(cell), block.cellType);
            vtkNew<vtkIdList> points;
            grid.GetCellPoints(cell, points);
            Ids nodes;
            for (vtkIdType i = 0; i < points->GetNumberOfIds(); ++i)
                nodes.push_back(static_cast<std::int64_t>(nodeOf(grid, points->GetId(i))) + 1);
            EXPECT_EQ(nodes, inOrderOfCell(Ids(next, next + block.nodesPerElement)));
            next += block.nodesPerElement;
        }
    }

    static void expectOnPoints(vtkUnstructuredGrid& grid, Original const& original, int step,
                               std::string const& name, int firstVariable, int components)
    {
        vtkDataArray* const array = grid.GetPointData()->GetArray(name.c_str());
        ASSERT_NE(array, nullptr) << name;
        ASSERT_EQ(array->GetNumberOfComponents(), components);
        for (int component = 0; component < components; ++component) {
            Values const expected =
                original.variable(step, EX_NODAL, firstVariable + component, 1, nodeCount);
            for (vtkIdType point = 0; point < grid.GetNumberOfPoints(); ++point)
                EXPECT_TRUE(
                    isSame(expected.at(nodeOf(grid, point)), array->GetComponent(point, component)))
                    << name << " at " << nodeOf(grid, point);
        }
    }

    static void expectOnCells(vtkUnstructuredGrid& grid, Original const& original, int step,
                              Block const& block)
    {
        vtkDataArray* const array = grid.GetCellData()->GetArray("E");
        ASSERT_EQ(array != nullptr, block.hasElementVariable);
        if (array == nullptr)
            return;
        Values const expected = original.variable(step, EX_ELEM_BLOCK, 1, block.id, block.elements);
        for (vtkIdType cell = 0; cell < block.elements; ++cell)
            EXPECT_TRUE(
                isSame(expected.at(static_cast<std::size_t>(cell)), array->GetComponent(cell, 0)));
    }

    Support::Folder const folder_;
};

TEST_F(ExodusRoundTrip, BlocksStepsAndValuesComeOutAsTheyWentIn)
{
    writeFile(folder_.path("in.exo"));
    Exchange::Report report;
    Exchange::translate(folder_.path("in.exo"), Exodus::open, folder_.path("out.mox"), {}, report);
    Export::exportModel(folder_.path("out.mox").string(), folder_.path("out.pvd").string());
    Original const original(folder_.path("in.exo"));
    for (int step = 1; step <= stepCount; ++step) {
        auto const arrived = arrivedStep(step);
        ASSERT_NE(arrived, nullptr);
        // The last one holds the nodes that no block uses.
        ASSERT_EQ(arrived->GetNumberOfBlocks(), blocks().size() + 1);
        for (std::size_t i = 0; i < blocks().size(); ++i) {
            Block const& block = blocks()[i];
            auto const index = static_cast<unsigned int>(i);
            SCOPED_TRACE(block.nameInModel);
            EXPECT_EQ(std::string(arrived->GetMetaData(index)->Get(vtkCompositeDataSet::NAME())),
                      block.nameInModel);
            auto* const grid = vtkUnstructuredGrid::SafeDownCast(arrived->GetBlock(index));
            ASSERT_NE(grid, nullptr);
            expectCells(*grid, original, block);
            if (block.elements == 0)
                continue;
            expectPoints(*grid, original);
            expectOnPoints(*grid, original, step, "T / \xC3\xA4", 1, 1);
            expectOnPoints(*grid, original, step, "vel", 2, 3);
            expectOnPoints(*grid, original, step, "S", 5, 6);
            expectOnCells(*grid, original, step, block);
        }
    }
}

} // namespace
