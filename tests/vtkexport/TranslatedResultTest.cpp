// A solver's result goes through both conversions: each value of the result file must be in the
// grids of its step, at the node of its number.

#include "support/Folder.h"
#include "vtkexport/ReadBack.h"

#include <exchange/Translation.h>
#include <frd/Frd.h>
#include <frd/Reader.h>
#include <frd/ResultLayout.h>
#include <frd/StepNames.h>
#include <vtkexport/Export.h>

#include <vtkCell.h>
#include <vtkCellData.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace {

using Names = std::vector<std::string>;

/// A field of one step, by node number.
using Values = std::map<unsigned int, std::vector<float>>;
/// By step and field.
using Results = std::map<std::string, std::map<std::string, Values>>;

void translate(std::filesystem::path const& file, std::string const& model)
{
    Exchange::Report report;
    Exchange::translate(file, Frd::open, model, {}, report);
}

Results resultsOf(std::filesystem::path const& file)
{
    Frd::Reader reader(file);
    Frd::StepNames names;
    Results results;
    Frd::ResultBlock block;
    while (reader.next(block)) {
        auto& step = results[names.stepName(block)];
        std::size_t const width = block.storedComponents().size();
        for (Frd::ResultLayout const& layout : Frd::layoutsOf(block)) {
            Values& values = step[names.resultName(block, layout.name)];
            for (std::size_t row = 0; row < block.nodes.size(); ++row)
                for (std::size_t const component : layout.components)
                    values[reader.mesh().nodes()[block.nodes[row]].id].push_back(
                        static_cast<float>(block.values[row * width + component]));
        }
    }
    return results;
}

void expectRow(Values const& expected, unsigned int node, float const* row, int width)
{
    auto const found = expected.find(node);
    for (int i = 0; i < width; ++i) {
        float const value = found == expected.end() ? std::numeric_limits<float>::quiet_NaN()
                                                    : found->second.at(static_cast<std::size_t>(i));
        EXPECT_TRUE(row[i] == value || (std::isnan(row[i]) && std::isnan(value)))
            << "node " << node << ": " << row[i] << " for " << value;
    }
}

void expectField(vtkUnstructuredGrid& grid, std::string const& name, Values const& expected)
{
    SCOPED_TRACE(name);
    auto const values = ReadBack::floats(grid.GetPointData(), name);
    auto const nodes = ReadBack::ids(grid.GetPointData(), "Node Ids");
    int const width = grid.GetPointData()->GetArray(name.c_str())->GetNumberOfComponents();
    ASSERT_EQ(values.size(), nodes.size() * static_cast<std::size_t>(width));
    for (std::size_t i = 0; i < nodes.size(); ++i)
        expectRow(expected, static_cast<unsigned int>(nodes[i]),
                  &values[i * static_cast<std::size_t>(width)], width);
}

void expectMesh(vtkUnstructuredGrid& grid, Frd::Mesh const& mesh)
{
    auto const nodes = ReadBack::ids(grid.GetPointData(), "Node Ids");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        auto const& expected = mesh.nodes()[*mesh.indexOf(nodes[i])].coordinates;
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(static_cast<float>(grid.GetPoint(static_cast<vtkIdType>(i))[axis]),
                      static_cast<float>(expected[static_cast<std::size_t>(axis)]));
    }
    EXPECT_EQ(static_cast<std::size_t>(grid.GetNumberOfCells()), mesh.elements().size());
}

void expectSameAs(std::filesystem::path const& file)
{
    SCOPED_TRACE(file);
    Support::Folder const folder;
    std::string const model = folder.path("model.mox").string();
    translate(file, model);
    Results const results = resultsOf(file);
    ASSERT_FALSE(results.empty());
    VtkExport::ExportOptions options;
    options.overwrite = true;
    for (auto const& [step, fields] : results) {
        SCOPED_TRACE(step);
        options.step = step;
        auto const summary =
            VtkExport::exportModel(model, folder.path("out.vtu").string(), options);
        EXPECT_EQ(summary.warnings, Names{});
        EXPECT_EQ(summary.fields.size(), fields.size());
        auto const grid = ReadBack::grid(folder.path("out.vtu"));
        expectMesh(*grid, Frd::Reader(file).mesh());
        for (auto const& [name, values] : fields)
            expectField(*grid, name, values);
    }
}

TEST(TranslatedResult, HasEveryValueOfTheResultFile)
{
    expectSameAs(std::filesystem::path(EXAMPLE_DATA) / "cantilever.frd");
    expectSameAs(std::filesystem::path(EXAMPLE_DATA) / "cantilever_binary.frd");
}

TEST(TranslatedResult, HasEveryElementType)
{
    for (std::string const name :
         {"be2", "be3", "tr3", "tr6", "qu4", "qu8", "te4", "te10", "pe6", "pe15", "he8", "he20"})
        expectSameAs(std::filesystem::path(FRD_TEST_DATA) / (name + ".frd"));
}

TEST(TranslatedResult, HasNoValueWhereTheSolverWroteNone)
{
    expectSameAs(std::filesystem::path(FRD_TEST_DATA) / "some_nodes.frd");
    expectSameAs(std::filesystem::path(FRD_TEST_DATA) / "buckling.frd");
}

TEST(TranslatedResult, HasAStepForEachOfTheSolver)
{
    Support::Folder const folder;
    std::string const model = folder.path("model.mox").string();
    translate(std::filesystem::path(EXAMPLE_DATA) / "cantilever.frd", model);
    VtkExport::exportModel(model, folder.path("out.pvd").string());
    auto const entries = ReadBack::collection(folder.path("out.pvd"));
    ASSERT_EQ(entries.size(), 14U);
    EXPECT_EQ(entries[0].first, 0.1F);
    EXPECT_EQ(entries[9].first, 1);
    EXPECT_EQ(entries[0].second, "out/step_01.vtm");
    EXPECT_EQ(ReadBack::blocks(folder.path(entries[13].second))->GetNumberOfBlocks(), 2U);
}

} // namespace
