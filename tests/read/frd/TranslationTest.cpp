// Models are read back with the reader under tools/moxread, which shares no code with the writer.

#include "TestFiles.h"

#include "support/ModelFile.h"

#include <exchange/Error.h>
#include <exchange/Translation.h>
#include <moxread/Model.h>
#include <moxread/Verify.h>
#include <read/frd/Source.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <memory>

namespace {

using namespace TestFiles;
using Support::ModelFile;
using Floats = std::vector<float>;
using Ids = std::vector<std::uint32_t>;
using Names = std::vector<std::string>;

Exchange::Summary translate(std::filesystem::path const& input, std::filesystem::path const& output,
                            bool overwrite = false)
{
    Exchange::TranslationOptions options;
    options.overwrite = overwrite;
    Exchange::Report report;
    Exchange::Summary const summary =
        Exchange::translate(input, Frd::open, output, options, report);
    EXPECT_EQ(report.warnings(), std::vector<std::string>());
    return summary;
}

/// A model made of a result file.
class Translated
{
public:
    explicit Translated(std::filesystem::path const& input)
        : file_(translated(input, folder_.path("out.mox")))
    {}

    static std::unique_ptr<Translated> ofContent(std::string const& content)
    {
        Folder const folder;
        return std::make_unique<Translated>(folder.write("in.frd", content));
    }

    MoxRead::Model& model() { return file_.model(); }

    MoxRead::Attributes const& rootAttributes() const { return file_.rootAttributes(); }

    Names shapeNames()
    {
        Names names;
        for (MoxRead::Node const& node : model().nodes())
            if (node.shape() != nullptr)
                names.push_back(node.name);
        return names;
    }

    MoxRead::Variable const* find(std::string const& shape, std::string const& dataset,
                                  std::string const& step = "") const
    {
        return file_.find({shape}, dataset, step);
    }

    MoxRead::Variable const& get(std::string const& shape, std::string const& dataset,
                                 std::string const& step = "") const
    {
        return file_.get({shape}, dataset, step);
    }

    Ids ids(std::string const& shape, std::string const& dataset)
    {
        return file_.numbers({shape}, dataset);
    }

    Floats floats(std::string const& shape, std::string const& dataset,
                  std::string const& step = "")
    {
        return file_.floats({shape}, dataset, step);
    }

    std::size_t variableCount() { return model().variableCount(); }

private:
    static std::filesystem::path translated(std::filesystem::path const& input,
                                            std::filesystem::path const& output)
    {
        translate(input, output);
        return output;
    }

    Folder folder_;
    ModelFile file_;
};

constexpr std::uint32_t elementConnectivity2 = 5;
constexpr std::uint32_t nodalScalar = 12;
constexpr std::uint32_t nodalVector = 13;
constexpr std::uint32_t nodalTensor = 15;

std::string const triangle = "Group 7 Material 2 2D";
std::string const loose = "Nodes without elements";

TEST(Translation, AMeshBecomesAShapeWithItsOwnNodesByAscendingId)
{
    auto const model = Translated::ofContent(triangleFile());
    EXPECT_EQ(model->model().node(1).name, "in");
    EXPECT_EQ(model->shapeNames(), (Names{triangle, loose}));
    EXPECT_EQ(model->ids(triangle, "Node Ids"), (Ids{1, 2, 3}));
    EXPECT_EQ(model->floats(triangle, "Coordinates"), (Floats{0, 0, 0, 1, 0, -0.25F, 0, 1, 0}));
    EXPECT_EQ(model->get(triangle, "Coordinates").width, 3);
    EXPECT_EQ(model->ids(triangle, "Element IDs"), (Ids{5}));
    EXPECT_EQ(model->ids(triangle, "Connectivity"), (Ids{0, 1, 2}));
    EXPECT_EQ(model->ids(triangle, "Polylength"), (Ids{3}));
    EXPECT_EQ(model->get(triangle, "Connectivity").variableType(), elementConnectivity2);
}

TEST(Translation, ElementsCarryTheirGroupAndMaterial)
{
    auto const model = Translated::ofContent(
        replaced(triangleFile(), "    1C\n", "    1C\n    1UMAT    2BRASS\n"));
    auto const& attributes = model->get("Group 7 Material BRASS 2D", "Connectivity").attributes;
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "GroupNumber"), 7U);
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "MaterialNumber"), 2U);
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "MaterialName"), "BRASS");
}

TEST(Translation, MaterialsOfTheSameNameGiveShapesOfDifferentNames)
{
    std::string const materials = "    1C\n    1UMAT    2BRASS\n    1UMAT    3BRASS\n";
    std::string const element = " -1         5    7    7    2\n"
                                " -2         1         2         3\n";
    std::string const second = " -1         6    7    7    3\n"
                               " -2         2         1         3\n";
    std::string const head = "    3C                             ";
    std::string content = replaced(triangleFile(), "    1C\n", materials);
    content = replaced(content, head + "1", head + "2");
    auto const model = Translated::ofContent(replaced(content, element, element + second));
    std::string const shape = "Group 7 Material BRASS 2D";
    EXPECT_EQ(model->shapeNames(), (Names{shape, shape + " (2)", loose}));
    EXPECT_EQ(model->ids(shape + " (2)", "Element IDs"), (Ids{6}));
    EXPECT_EQ(model->ids(shape + " (2)", "Connectivity"), (Ids{1, 0, 2}));
}

TEST(Translation, ANodeMayHaveTheNumber0)
{
    auto const model =
        Translated::ofContent(replaced(triangleFile(), " -1         9", " -1         0"));
    EXPECT_EQ(model->ids(loose, "Node Ids"), (Ids{0}));
}

TEST(Translation, TheRootTellsWhereTheModelComesFrom)
{
    auto const model = Translated::ofContent(
        replaced(triangleFile(), "    1C\n",
                 "    1CBEAM\n    1UA beam\n    1Uof brass\n"
                 "    1UPGM               Solver\n    1UVERSION           Version 1\n"
                 "    1UDATE              20.november.2026\n"));
    EXPECT_EQ(model->model().node(1).name, "BEAM");
    MoxRead::Attributes const& attributes = model->rootAttributes();
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Title"), "A beam");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Title 2"), "of brass");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Solver"), "Solver");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "SolverVersion"), "Version 1");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Date"), "20.november.2026");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Source"), "in.frd");
    EXPECT_EQ(attributes.size(), 6U);
    auto const& writings = model->model().globalInformation().writings;
    ASSERT_EQ(writings.size(), 1U);
    EXPECT_EQ(writings[0].text1, "mox");
    EXPECT_EQ(writings[0].text2, "in.frd");
}

TEST(Translation, DisplacementsStandOnTheShapesRowsAndMissingNodesAreNotNumbers)
{
    auto const model = Translated::ofContent(triangleFile());
    Floats const values = model->floats(triangle, "Displacement", "Step 1");
    ASSERT_EQ(values.size(), 9U);
    EXPECT_EQ(Floats(values.begin(), values.begin() + 6), (Floats{-1, -2, -3, 1, 2, 3}));
    for (std::size_t i = 6; i < 9; ++i)
        EXPECT_TRUE(std::isnan(values[i])) << i;
    auto const& variable = model->get(triangle, "Displacement", "Step 1");
    EXPECT_EQ(variable.width, 3);
    EXPECT_EQ(variable.variableType(), nodalVector);
}

TEST(Translation, AStepTellsItsNumberTimeAndAnalysis)
{
    auto const model = Translated::ofContent(
        replaced(triangleFile(), "  100C",
                 "    1PSTEP                        17           3           2\n"
                 "    1PHID                         -1\n  100C"));
    auto const& variable = model->get(triangle, "Displacement", "Step 2 Increment 3");
    MoxRead::Attributes const& attributes = variable.attributes;
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "StepNumber"), 2U);
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "Increment"), 3U);
    EXPECT_EQ(ModelFile::attribute<float>(attributes, "Time"), 0.5F);
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "AnalysisType"), "Static");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Parameter.HID"), "-1");
    EXPECT_EQ(attributes.size(), 5U);
    EXPECT_FALSE(variable.vibration);
}

TEST(Translation, AModeTellsItsNumberAndFrequencyAndIsAVibration)
{
    auto const model = Translated::ofContent(
        replaced(replaced(triangleFile(), "  100C",
                          "    1PSTEP                        17           1           2\n"
                          "    1PMODE                         4\n  100C"),
                 " 0    1           1\n -4", " 2    1MODAL      1\n -4"));
    auto const& variable = model->get(triangle, "Displacement", "Step 2 Mode 4");
    MoxRead::Attributes const& attributes = variable.attributes;
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "Mode"), 4U);
    EXPECT_EQ(ModelFile::attribute<float>(attributes, "Frequency"), 0.5F);
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "AnalysisType"), "Frequency");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Analysis"), "MODAL");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Category"), "Vibration");
    EXPECT_EQ(attributes.count("Time"), 0U);
    EXPECT_EQ(attributes.count("Increment"), 0U);
    EXPECT_TRUE(variable.vibration);
}

TEST(Translation, ValuesTooLargeForAFloatAreInfinite)
{
    auto const model =
        Translated::ofContent(replaced(triangleFile(), "-1.00000E+00-2.00000E+00-3.00000E+00",
                                       " 1.00000+100-1.00000+100 1.00000-100"));
    Floats const values = model->floats(triangle, "Displacement", "Step 1");
    EXPECT_EQ(values[0], std::numeric_limits<float>::infinity());
    EXPECT_EQ(values[1], -std::numeric_limits<float>::infinity());
    EXPECT_EQ(values[2], 0.0F);
}

TEST(Translation, ARepeatedResultOfAStepIsKeptBesideTheFirst)
{
    std::string const again = replaced(displacementBlock(), " 1.00000E+00", " 5.00000E+00");
    auto const model = Translated::ofContent(replaced(triangleFile(), " 9999", again + " 9999"));
    EXPECT_EQ(model->floats(triangle, "Displacement", "Step 1")[3], 1.0F);
    EXPECT_EQ(model->floats(triangle, "Displacement (2)", "Step 1")[3], 5.0F);
}

TEST(Translation, BlocksOfTwoStepsMayStandInTurns)
{
    std::string const second =
        replaced(displacementBlock(), "    1           1\n -4", "    2           1\n -4");
    std::string const again = replaced(displacementBlock(), "DISP", "FORC");
    auto const model =
        Translated::ofContent(replaced(triangleFile(), " 9999", second + again + " 9999"));
    auto const displacement = model->get(triangle, "Displacement", "Step 1").attributes;
    EXPECT_EQ(model->get(triangle, "FORC", "Step 1").attributes, displacement);
    EXPECT_NE(model->get(triangle, "Displacement", "Step 2").attributes, displacement);
}

/// Where a model has the corners and mid-side nodes of the solver's one-element decks.
struct OneElement
{
    char const* name;
    char const* dimension;
    Ids nodeIds;
};

TEST(Translation, EveryElementTypeHasItsNodesInTheModelsOrder)
{
    std::vector<OneElement> const elements = {
        {"he8", "3D", {1, 2, 3, 4, 5, 6, 7, 8}},
        {"pe6", "3D", {1, 2, 3, 4, 5, 6}},
        {"te4", "3D", {1, 2, 3, 4}},
        {"he20", "3D", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}},
        {"pe15", "3D", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}},
        {"te10", "3D", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {"tr3", "2D", {1, 2, 3}},
        {"tr6", "2D", {1, 2, 3, 4, 5, 6}},
        {"qu4", "2D", {1, 2, 3, 4}},
        {"qu8", "2D", {1, 2, 3, 4, 5, 6, 7, 8}},
        {"be2", "1D", {1, 2}},
        {"be3", "1D", {1, 3, 2}}};
    std::map<std::string, std::uint32_t> const types = {{"1D", 4}, {"2D", 5}, {"3D", 6}};
    for (OneElement const& element : elements) {
        Translated model(solverFile(element.name));
        std::string const shape = std::string("Group 0 Material STEEL ") + element.dimension;
        ASSERT_EQ(model.shapeNames(), (Names{shape})) << element.name;
        Ids const nodeIds = model.ids(shape, "Node Ids");
        Ids connected;
        for (std::uint32_t const row : model.ids(shape, "Connectivity"))
            connected.push_back(nodeIds.at(row));
        EXPECT_EQ(connected, element.nodeIds) << element.name;
        EXPECT_EQ(model.ids(shape, "Polylength"),
                  (Ids{static_cast<std::uint32_t>(element.nodeIds.size())}));
        EXPECT_EQ(model.get(shape, "Connectivity").variableType(), types.at(element.dimension));
    }
}

/// The value that a model must have for a result of the file: NaN where the file has none.
using NodeValues = std::map<std::uint32_t, std::vector<double>>;

NodeValues valuesById(Frd::Mesh const& mesh, Frd::ResultBlock const& block)
{
    NodeValues values;
    std::size_t const width = block.values.size() / block.nodes.size();
    for (std::size_t i = 0; i < block.nodes.size(); ++i) {
        auto const first = block.values.begin() + static_cast<std::ptrdiff_t>(i * width);
        values[mesh.nodes()[block.nodes[i]].id].assign(first,
                                                       first + static_cast<std::ptrdiff_t>(width));
    }
    return values;
}

std::string stepOf(Frd::ResultBlock const& block)
{
    std::string const step = "Step " + std::to_string(block.step.value().step);
    return block.mode ? step + " Mode " + std::to_string(*block.mode)
                      : step + " Increment " + std::to_string(block.step->increment);
}

/// Compares a dataset of vectors, tensors or scalars with the block that it was made of.
void expectSameValues(Translated& model, std::string const& shape, Frd::Mesh const& mesh,
                      Frd::ResultBlock const& block)
{
    std::string const name = block.name == "DISP" ? "Displacement" : block.name;
    Floats const found = model.floats(shape, name, stepOf(block));
    Ids const nodeIds = model.ids(shape, "Node Ids");
    NodeValues const expected = valuesById(mesh, block);
    std::size_t const width = block.values.size() / block.nodes.size();
    ASSERT_EQ(found.size(), nodeIds.size() * width);
    for (std::size_t row = 0; row < nodeIds.size(); ++row)
        for (std::size_t c = 0; c < width; ++c)
            ASSERT_EQ(found[row * width + c], static_cast<float>(expected.at(nodeIds[row]).at(c)))
                << block.name << " node " << nodeIds[row];
}

void expectSameMesh(Translated& model, std::string const& shape, Frd::Mesh const& mesh)
{
    Ids const nodeIds = model.ids(shape, "Node Ids");
    Floats const coordinates = model.floats(shape, "Coordinates");
    ASSERT_TRUE(std::is_sorted(nodeIds.begin(), nodeIds.end()));
    for (std::size_t row = 0; row < nodeIds.size(); ++row)
        for (std::size_t axis = 0; axis < 3; ++axis)
            ASSERT_EQ(coordinates.at(row * 3 + axis),
                      static_cast<float>(
                          mesh.nodes()[mesh.indexOf(nodeIds[row]).value()].coordinates[axis]));
}

/// Bricks of second order only.
void expectSameBricks(Translated& model, std::string const& shape, Frd::Mesh const& mesh,
                      std::int64_t material)
{
    std::array<std::size_t, 20> const order = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,
                                               10, 11, 16, 17, 18, 19, 12, 13, 14, 15};
    Ids const nodeIds = model.ids(shape, "Node Ids");
    Ids expected;
    Ids elementIds;
    for (Frd::Element const& element : mesh.elements()) {
        if (element.material != material)
            continue;
        elementIds.push_back(element.id);
        for (std::size_t const position : order)
            expected.push_back(mesh.nodes()[mesh.nodeOf(element, position)].id);
    }
    Ids found;
    for (std::uint32_t const row : model.ids(shape, "Connectivity"))
        found.push_back(nodeIds.at(row));
    EXPECT_EQ(found, expected);
    EXPECT_EQ(model.ids(shape, "Element IDs"), elementIds);
    EXPECT_EQ(model.ids(shape, "Polylength"), Ids(elementIds.size(), 20));
}

void expectWholeCantilever(std::string const& fileName)
{
    Translated model(exampleFile(fileName));
    Names const shapes = {"Group 0 Material STEEL 3D", "Group 0 Material ALUMINIUM 3D"};
    ASSERT_EQ(model.shapeNames(), shapes);
    Frd::Reader reader(exampleFile(fileName));
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        ASSERT_NO_FATAL_FAILURE(expectSameMesh(model, shapes[i], reader.mesh()));
        expectSameBricks(model, shapes[i], reader.mesh(), static_cast<std::int64_t>(i + 1));
    }
    Frd::ResultBlock block;
    std::size_t results = 0;
    while (reader.next(block)) {
        ++results;
        for (std::string const& shape : shapes)
            ASSERT_NO_FATAL_FAILURE(expectSameValues(model, shape, reader.mesh(), block));
    }
    EXPECT_EQ(model.variableCount(), shapes.size() * (5 + results));
}

TEST(Translation, EveryValueOfTheCantileverIsInItsModel)
{
    expectWholeCantilever("cantilever.frd");
}

TEST(Translation, EveryValueOfTheBinaryCantileverIsInItsModel)
{
    expectWholeCantilever("cantilever_binary.frd");
}

TEST(Translation, KindsOfResultsHaveTheirTypesAndWidths)
{
    Translated model(solverFile("frequency_response"));
    std::string const shape = "Group 0 Material STEEL 3D";
    std::string const step = "Step 2 Increment 0";
    struct Expected
    {
        char const* name;
        std::uint32_t type;
        int width;
    };
    for (Expected const& expected :
         {Expected{"Displacement", nodalVector, 3}, Expected{"DISPI", nodalVector, 3},
          Expected{"STRESS", nodalTensor, 6}, Expected{"STRESSI", nodalTensor, 6},
          Expected{"ERROR", nodalScalar, 1}, Expected{"PDISP MAG1", nodalScalar, 1},
          Expected{"PDISP PHA3", nodalScalar, 1}, Expected{"PSTRESS PHAZX", nodalScalar, 1}}) {
        MoxRead::Variable const& variable = model.get(shape, expected.name, step);
        EXPECT_EQ(variable.variableType(), expected.type) << expected.name;
        EXPECT_EQ(variable.width, expected.width) << expected.name;
        EXPECT_EQ(variable.rows(), 8U) << expected.name;
    }
}

TEST(Translation, SplitComponentsKeepTheirValues)
{
    Translated model(solverFile("frequency_response"));
    Frd::Reader reader(solverFile("frequency_response"));
    Frd::ResultBlock block;
    do {
        ASSERT_TRUE(reader.next(block));
    } while (block.name != "PSTRESS");
    Floats const found =
        model.floats("Group 0 Material STEEL 3D", "PSTRESS PHAYZ", "Step 2 Increment 0");
    ASSERT_EQ(found.size(), 8U);
    for (std::size_t row = 0; row < 8; ++row)
        EXPECT_EQ(found[row], static_cast<float>(block.values[row * 12 + 10]));
}

TEST(Translation, BucklingModesBecomeStepsOfTheirOwn)
{
    Translated model(solverFile("buckling"));
    std::string const shape = "Group 0 Material STEEL 3D";
    EXPECT_EQ(ModelFile::attribute<float>(
                  model.get(shape, "Displacement", "Step 1 Increment 1").attributes, "Value"),
              0.0F);
    EXPECT_GT(ModelFile::attribute<float>(
                  model.get(shape, "Displacement", "Step 1 Increment 1 (2)").attributes, "Value"),
              1.0F);
}

std::string complaintOf(std::filesystem::path const& input, std::filesystem::path const& output,
                        bool overwrite = false)
{
    try {
        translate(input, output, overwrite);
        return "";
    } catch (Exchange::Error const& error) {
        return error.what();
    }
}

TEST(Translation, ABadResultFileLeavesNoOutputBehind)
{
    Folder const folder;
    auto const input = folder.write("in.frd", replaced(triangleFile(), " 9999\n", ""));
    EXPECT_EQ(complaintOf(input, folder.path("out.mox")),
              input.string() +
                  ": line 20: The file ends without its end record (9999); 1 step is whole, Step "
                  "1, if no more results of it were to come: --partial keeps it.");
    EXPECT_EQ(folder.names(), (Names{"in.frd"}));
}

TEST(Translation, AFileWithoutNodesIsRefused)
{
    Folder const folder;
    auto const input = folder.write("in.frd", "    1C\n 9999\n");
    EXPECT_EQ(complaintOf(input, folder.path("out.mox")),
              input.string() + ": The file holds no nodes.");
}

} // namespace
