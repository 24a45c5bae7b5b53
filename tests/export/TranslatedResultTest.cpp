// A solver's result goes through both conversions: each value of the result file must be in the
// grids of its step, at the node of its number.

#include "ReadBack.h"
#include "support/Folder.h"

#include <exchange/Translation.h>
#include <export/Export.h>
#include <read/frd/Reader.h>
#include <read/frd/ResultLayout.h>
#include <read/frd/Source.h>
#include <read/frd/StepNames.h>

#include <vtkCell.h>
#include <vtkCellData.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <numeric>

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

/// Numbers of an element's nodes, in the order of the result file.
std::vector<vtkIdType> nodesOf(Frd::Mesh const& mesh, Frd::Element const& element)
{
    std::vector<vtkIdType> nodes;
    for (std::size_t i = 0; i < element.type->nodeCount; ++i)
        nodes.push_back(mesh.nodes()[mesh.nodeOf(element, i)].id);
    return nodes;
}

/// The same of a cell.
std::vector<vtkIdType> nodesOf(vtkUnstructuredGrid& grid, vtkIdType cell, Frd::Topology const& type)
{
    auto const ids = ReadBack::ids(grid.GetPointData(), "Node Ids");
    vtkNew<vtkIdList> points;
    grid.GetCellPoints(cell, points);
    std::vector<vtkIdType> nodes(type.nodeCount);
    EXPECT_EQ(points->GetNumberOfIds(), static_cast<vtkIdType>(nodes.size()));
    for (std::size_t i = 0; i < nodes.size(); ++i)
        nodes.at(type.modelOrder.at(i)) =
            ids.at(static_cast<std::size_t>(points->GetId(static_cast<vtkIdType>(i))));
    return nodes;
}

void expectElements(vtkUnstructuredGrid& grid, Frd::Mesh const& mesh)
{
    std::map<vtkIdType, Frd::Element const*> elements;
    for (Frd::Element const& element : mesh.elements())
        elements[element.id] = &element;
    auto const ids = ReadBack::ids(grid.GetCellData(), "Element IDs");
    for (std::size_t cell = 0; cell < ids.size(); ++cell) {
        // Nodes that no element uses are points without a number.
        if (ids[cell] == 0)
            continue;
        ASSERT_EQ(elements.count(ids[cell]), 1U) << "element " << ids[cell];
        Frd::Element const& element = *elements.at(ids[cell]);
        EXPECT_EQ(nodesOf(grid, static_cast<vtkIdType>(cell), *element.type),
                  nodesOf(mesh, element))
            << "element " << element.id;
        elements.erase(ids[cell]);
    }
    EXPECT_TRUE(elements.empty());
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
    expectElements(grid, mesh);
}

void expectSameAs(std::filesystem::path const& file)
{
    SCOPED_TRACE(file);
    Support::Folder const folder;
    std::string const model = folder.path("model.mox").string();
    translate(file, model);
    Results const results = resultsOf(file);
    ASSERT_FALSE(results.empty());
    Export::ExportOptions options;
    options.overwrite = true;
    for (auto const& [step, fields] : results) {
        SCOPED_TRACE(step);
        options.step = step;
        auto const summary = Export::exportModel(model, folder.path("out.vtu").string(), options);
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

/// `printf` into a string.
template <typename... Arguments>
std::string formatted(char const* format, Arguments... arguments)
{
    std::string text(200, '\0');
    int const length = std::snprintf(&text[0], text.size(), format, arguments...);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string elementText(int id, int type, int material, std::vector<int> const& nodes)
{
    std::string text = formatted(" -1%10d%5d%5d%5d\n", id, type, 0, material);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        text += i % 10 == 0 ? " -2" : "";
        text += formatted("%10d", nodes[i]);
        text += i % 10 == 9 || i + 1 == nodes.size() ? "\n" : "";
    }
    return text;
}

/// A step in which the nodes have a temperature and a stress.
std::string stepText(int step, int nodes)
{
    std::string const head = formatted(
        "  100CL  101%12.5E%12d                     0%5d           1\n", 0.5 * step, nodes, step);
    std::string text = head + " -4  NDTEMP      1    1\n -5  T           1    1    0    0\n";
    for (int node = 1; node <= nodes; ++node)
        text += formatted(" -1%10d%12.5E\n", node, node == 3 ? NAN : 10.0 * step + node / 7.0);
    text += " -3\n" + head +
            " -4  STRESS      6    1\n -5  SXX         1    4    1    1\n"
            " -5  SYY         1    4    2    2\n -5  SZZ         1    4    3    3\n"
            " -5  SXY         1    4    1    2\n -5  SYZ         1    4    2    3\n"
            " -5  SZX         1    4    3    1\n";
    for (int node = 1; node <= nodes; ++node) {
        text += formatted(" -1%10d", node);
        for (int component = 0; component < 6; ++component)
            text += formatted("%12.5E", step * 1e3 + node + component / 8.0);
        text += "\n";
    }
    return text + " -3\n";
}

/// Elements of several dimensions and orders in two materials, and a node that none of them uses.
std::string mixedFile()
{
    constexpr int nodes = 30;
    std::string text = "    1C\n    1UMAT    1Stahl / \xC3\xA4 1\n    1UMAT    2glass\n";
    text += formatted("    2C%30d                                     1\n", nodes);
    for (int node = 1; node <= nodes; ++node)
        text += formatted(" -1%10d%12.5E%12.5E%12.5E\n", node, node / 3.0, node * node / 7.0,
                          1.0 / node);
    std::vector<int> brick(20);
    std::iota(brick.begin(), brick.end(), 1);
    text += formatted(" -3\n    3C%30d                                     1\n", 6);
    text += elementText(10, 4, 1, brick) + elementText(20, 3, 1, {20, 21, 22, 23}) +
            elementText(30, 7, 2, {1, 2, 24}) +
            elementText(40, 10, 2, {5, 6, 7, 8, 25, 26, 27, 28}) + elementText(50, 11, 2, {29, 1}) +
            elementText(60, 12, 2, {2, 29, 3}) + " -3\n";
    return text + stepText(1, nodes) + stepText(2, nodes) + " 9999\n";
}

TEST(TranslatedResult, HasMixedMeshesAndNamesOfAllKinds)
{
    Support::Folder const folder;
    std::filesystem::path const file = folder.write("mixed.frd", mixedFile());
    expectSameAs(file);
    std::string const model = folder.path("model.mox").string();
    translate(file, model);
    Export::exportModel(model, folder.path("out.vtu").string());
    EXPECT_EQ(
        ReadBack::texts(ReadBack::grid(folder.path("out.vtu"))->GetFieldData(), "Shape Names"),
        (Names{"Group 0 Material Stahl / \xC3\xA4 1 3D", "Group 0 Material glass 1D",
               "Group 0 Material glass 2D", "Nodes without elements"}));
}

TEST(TranslatedResult, HasAStepForEachOfTheSolver)
{
    Support::Folder const folder;
    std::string const model = folder.path("model.mox").string();
    translate(std::filesystem::path(EXAMPLE_DATA) / "cantilever.frd", model);
    Export::exportModel(model, folder.path("out.pvd").string());
    auto const entries = ReadBack::collection(folder.path("out.pvd"));
    ASSERT_EQ(entries.size(), 14U);
    EXPECT_EQ(entries[0].first, 0.1F);
    EXPECT_EQ(entries[9].first, 1);
    EXPECT_EQ(entries[0].second, "out/step_01.vtm");
    EXPECT_EQ(ReadBack::blocks(folder.path(entries[13].second))->GetNumberOfBlocks(), 2U);
}

} // namespace
