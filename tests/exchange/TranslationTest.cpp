#include "MemorySource.h"

#include "support/FileSizeLimit.h"
#include "support/Folder.h"
#include "support/ModelFile.h"

#include <exchange/Error.h>
#include <exchange/Translation.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

using namespace Exchange;
using Support::contentOf;
using Support::Folder;
using Support::ModelFile;
using Floats = std::vector<float>;
using Numbers = std::vector<std::uint32_t>;
using Names = std::vector<std::string>;
using Content = MemorySource::Content;

class Translation : public ::testing::Test
{
protected:
    Summary translateContent(Content const& content)
    {
        TranslationOptions options;
        options.overwrite = overwrite_;
        options.partial = partial_;
        options.progress = [this](std::uint64_t done, std::uint64_t all) {
            told_.emplace_back(done, all);
        };
        return translate(
            input_,
            [&](std::filesystem::path const&, Report&) {
                return std::make_unique<MemorySource>(content);
            },
            output_, options, report_);
    }

    ModelFile& modelOf(Content const& content)
    {
        translateContent(content);
        model_ = std::make_unique<ModelFile>(output_);
        return *model_;
    }

    std::string complaintAbout(Content const& content)
    {
        try {
            translateContent(content);
        } catch (Error const& error) {
            return error.what();
        }
        return {};
    }

    Names warnings() const { return report_.warnings(); }

    Folder folder_;
    std::filesystem::path input_ = folder_.write("plate.in", "input");
    std::filesystem::path output_ = folder_.path("out.mox");
    bool partial_ = false;
    bool overwrite_ = false;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> told_;
    Report report_;
    std::unique_ptr<ModelFile> model_;
};

Content withField(Field const& field)
{
    return {{}, {twoTriangles("Plate")}, {{{"S", 0.5, {}}, {field}}}};
}

TEST_F(Translation, WholeStepsAloneAreRefusedOfAFormatThatDoesNotKnowThem)
{
    partial_ = true;
    EXPECT_EQ(complaintAbout({{}, {twoTriangles("Plate")}, {}}),
              input_.string() + ": --partial is of no use here: files of this format are whole or "
                                "can't be read.");
    EXPECT_EQ(folder_.names(), (Names{"plate.in"}));
}

TEST_F(Translation, APartBecomesAShapeBelowItsGroups)
{
    Part part = twoTriangles("Plate");
    part.groups = {"Car", "Floor / left"};
    part.nodeIds = {10, 20, 30, 4294967295};
    part.elementIds = {7, 5};
    ModelFile& model = modelOf({{}, {part}, {}});
    ModelFile::Path const shape = {"Car", "Floor / left", "Plate"};
    EXPECT_EQ(model.shapes(), (Names{"plate/Car/Floor / left/Plate"}));
    EXPECT_EQ(model.floats(shape, "Coordinates"), (Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
    EXPECT_EQ(model.numbers(shape, "Node Ids"), (Numbers{10, 20, 30, 4294967295}));
    EXPECT_EQ(model.numbers(shape, "Connectivity"), (Numbers{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(model.get(shape, "Connectivity").variableType(), 5U);
    EXPECT_EQ(model.numbers(shape, "Polylength"), (Numbers{3, 3}));
    EXPECT_EQ(model.numbers(shape, "Element IDs"), (Numbers{7, 5}));
    EXPECT_EQ(warnings(), Names());
}

TEST_F(Translation, ASplitPartHasItsRowsWhereTheyBelong)
{
    Part part = twoTriangles("Plate");
    part.coordinates.insert(part.coordinates.end(), {9, 9, 9});
    part.types[1] = ElementType::find("Polygon");
    part.nodeIds = {1, 2, 3, 4, 5};
    part.elementIds = {11, 12};
    Field const onNodes = fieldOf("T", Location::Nodes, 1, Floats{1, 2, 3, 4, 5});
    Field const onElements = fieldOf("E", Location::Elements, 1, Floats{-1, -2});
    ModelFile& model = modelOf({{}, {part}, {{{"S", 0.5, {}}, {onNodes, onElements}}}});
    EXPECT_EQ(model.shapes(),
              (Names{"plate/Plate", "plate/Plate Polygon", "plate/Plate nodes without elements"}));
    ModelFile::Path const polygon = {"Plate Polygon"};
    EXPECT_EQ(model.numbers(polygon, "Node Ids"), (Numbers{1, 3, 4}));
    EXPECT_EQ(model.numbers(polygon, "Connectivity"), (Numbers{0, 1, 2}));
    EXPECT_EQ(model.numbers(polygon, "Element IDs"), (Numbers{12}));
    EXPECT_EQ(ModelFile::attribute<std::string>(model.get(polygon, "Connectivity").attributes,
                                                "ElementType"),
              "Polygon");
    EXPECT_EQ(model.floats(polygon, "T", "S"), (Floats{1, 3, 4}));
    EXPECT_EQ(model.floats(polygon, "E", "S"), (Floats{-2}));
    ModelFile::Path const rest = {"Plate nodes without elements"};
    EXPECT_EQ(model.datasets(rest), (Names{"Coordinates", "Node Ids", "T|S"}));
    EXPECT_EQ(model.floats(rest, "T", "S"), (Floats{5}));
}

TEST_F(Translation, PartsWithoutElementsOrNodesStayShapes)
{
    Part points;
    points.name = "Points";
    points.coordinates = {1, 2, 3};
    Part empty;
    empty.name = "Empty";
    ModelFile& model = modelOf({{}, {points, empty, empty}, {}});
    EXPECT_EQ(model.shapes(), (Names{"plate/Points", "plate/Empty", "plate/Empty (2)"}));
    EXPECT_EQ(model.datasets({"Points"}), (Names{"Coordinates", "Node Ids"}));
    EXPECT_EQ(model.datasets({"Empty"}), Names());
}

TEST_F(Translation, IdsThatAModelCannotHoldBecomeRunningNumbers)
{
    Part part = twoTriangles("Plate");
    part.nodeIds = {1, 2, 3, 4294967296};
    part.elementIds = {0, 1};
    ModelFile& model = modelOf({{}, {part}, {}});
    EXPECT_EQ(model.numbers({"Plate"}, "Node Ids"), (Numbers{1, 2, 3, 4}));
    EXPECT_EQ(model.numbers({"Plate"}, "Element IDs"), (Numbers{1, 2}));
    EXPECT_EQ(warnings().size(), 2U);
}

TEST_F(Translation, TheSourceTellsTheSmallestId)
{
    Part part = twoTriangles("Plate");
    part.nodeIds = {3, 2, 1, 0};
    part.smallestId = 0;
    EXPECT_EQ(modelOf({{}, {part}, {}}).numbers({"Plate"}, "Node Ids"), (Numbers{3, 2, 1, 0}));
    EXPECT_EQ(warnings(), Names());
}

TEST_F(Translation, AModelIsCalledAsTheSourceCallsItOrElseAsTheFile)
{
    Content content = {{}, {twoTriangles("Plate")}, {}};
    EXPECT_EQ(modelOf(content).shapes(), (Names{"plate/Plate"}));
    content.modelName = "Lid";
    overwrite_ = true;
    EXPECT_EQ(modelOf(content).shapes(), (Names{"Lid/Plate"}));
}

TEST_F(Translation, FieldsHaveTheTypeThatTheirPlaceAndWidthTell)
{
    struct Case
    {
        Location location;
        std::size_t width;
        std::uint32_t type;
    };
    for (Case const& expected :
         {Case{Location::Nodes, 1, 12}, Case{Location::Nodes, 3, 13}, Case{Location::Nodes, 6, 15},
          Case{Location::Elements, 1, 16}, Case{Location::Elements, 3, 17},
          Case{Location::Elements, 6, 19}}) {
        std::size_t const rows = expected.location == Location::Nodes ? 4 : 2;
        overwrite_ = true;
        ModelFile& model = modelOf(withField(
            fieldOf("F", expected.location, expected.width, Floats(rows * expected.width, 2.5F))));
        MoxRead::Variable const& variable = model.get({"Plate"}, "F", "S");
        EXPECT_EQ(variable.variableType(), expected.type);
        EXPECT_EQ(variable.width, expected.width);
        EXPECT_EQ(variable.rows(), rows);
    }
}

TEST_F(Translation, DisplacementsWithRotationsHaveATypeOfTheirOwn)
{
    ModelFile& model =
        modelOf(withField(fieldOf("Displacement", Location::Nodes, 6, Floats(24, 1))));
    EXPECT_EQ(model.get({"Plate"}, "Displacement", "S").variableType(), 14U);
}

TEST_F(Translation, IntegersThatFitStayIntegersAndOthersBecomeFloats)
{
    using Integers = std::vector<std::int64_t>;
    Content content = withField(fieldOf("I", Location::Elements, 1, Integers{0, 4294967295}));
    content.steps[0].second.push_back(fieldOf("J", Location::Elements, 1, Integers{-1, 16777217}));
    ModelFile& model = modelOf(content);
    EXPECT_EQ(model.numbers({"Plate"}, "I", "S"), (Numbers{0, 4294967295}));
    EXPECT_EQ(model.floats({"Plate"}, "J", "S"), (Floats{-1, 16777216}));
    ASSERT_EQ(warnings().size(), 1U);
    EXPECT_EQ(warnings()[0].substr(0, 20), "1 value was rounded ");
}

TEST_F(Translation, DoublesBecomeTheNearestFloatsAndNaNStays)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    ModelFile& model =
        modelOf(withField(fieldOf("F", Location::Elements, 1, std::vector<double>{0.1, nan})));
    Floats const values = model.floats({"Plate"}, "F", "S");
    EXPECT_EQ(values[0], 0.1F);
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_NEAR(report_.largestError(), (0.1F - 0.1) / 0.1, 1e-20);
}

TEST_F(Translation, NamesThatWouldBeAlikeAreKeptApartInTheSameWayInEveryStep)
{
    Field const node = fieldOf("T", Location::Nodes, 1, Floats{1, 2, 3, 4});
    Field const element = fieldOf("T", Location::Elements, 1, Floats{5, 6});
    Field const coordinates = fieldOf("Coordinates", Location::Nodes, 3, Floats(12, 7));
    ModelFile& model = modelOf({{},
                                {twoTriangles("Plate")},
                                {{{"A", 1.0, {}}, {node, element, node, coordinates}},
                                 {{"A", 2.0, {}}, {element, node}}}});
    Names datasets = model.datasets({"Plate"});
    std::sort(datasets.begin(), datasets.end());
    EXPECT_EQ(datasets,
              (Names{"Connectivity", "Coordinates", "Coordinates (2)|A", "Element IDs", "Node Ids",
                     "Polylength", "T (2)|A", "T (2)|A (2)", "T (3)|A", "T|A", "T|A (2)"}));
    EXPECT_EQ(model.floats({"Plate"}, "T (2)", "A (2)"), (Floats{5, 6}));
}

TEST_F(Translation, StepsCarryNumberAndTime)
{
    Content content = withField(fieldOf("F", Location::Elements, 1, Floats{1, 2}));
    content.steps[0].first.time = 0.1;
    content.steps[0].first.attributes = {{"Load", 2.5F}, {"Structure", std::string("x")}};
    ModelFile& model = modelOf(content);
    MoxRead::Attributes const& attributes = model.get({"Plate"}, "F", "S").attributes;
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "StepNumber"), 1U);
    EXPECT_EQ(ModelFile::attribute<float>(attributes, "Time"), 0.1F);
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "TimeText"), "0.1");
    EXPECT_EQ(ModelFile::attribute<float>(attributes, "Load"), 2.5F);
    EXPECT_EQ(warnings(),
              (Names{"The attribute 'Structure' was left out: a model reserves its name."}));
}

TEST_F(Translation, AStepThatMayGoOnDoesSoUnderItsNameAndNumber)
{
    auto const with = [](std::string const& name) {
        return std::vector<Field>{fieldOf(name, Location::Elements, 1, Floats{1, 2})};
    };
    StepInfo const first = {"S", 1.0, {}, true};
    StepInfo const second = {"T", 2.0, {}, true};
    Content const content = {
        {}, {twoTriangles("Plate")}, {{first, with("A")}, {second, with("A")}, {first, with("B")}}};
    EXPECT_EQ(translateContent(content).steps, 2U);
    ModelFile model(output_);
    auto const number = [&model](std::string const& field, std::string const& step) {
        return ModelFile::attribute<std::uint32_t>(model.get({"Plate"}, field, step).attributes,
                                                   "StepNumber");
    };
    EXPECT_EQ(number("A", "S"), 1U);
    EXPECT_EQ(number("A", "T"), 2U);
    EXPECT_EQ(number("B", "S"), 1U);
}

TEST_F(Translation, StepsWithoutANameAreNumberedWhereThereAreSeveral)
{
    std::vector<Field> const fields = {fieldOf("F", Location::Elements, 1, Floats{1, 2})};
    ModelFile& model =
        modelOf({{}, {twoTriangles("Plate")}, {{StepInfo(), fields}, {StepInfo(), fields}}});
    EXPECT_NE(model.find({"Plate"}, "F", "Step 1"), nullptr);
    EXPECT_NE(model.find({"Plate"}, "F", "Step 2"), nullptr);
}

TEST_F(Translation, FieldsWithoutTimeBelongToNoStep)
{
    Content content = withField(fieldOf("Coordinates", Location::Nodes, 3, Floats(12, 7)));
    content.steps[0].first = StepInfo();
    ModelFile& model = modelOf(content);
    EXPECT_EQ(model.floats({"Plate"}, "Coordinates (2)"), Floats(12, 7));
    EXPECT_EQ(model.floats({"Plate"}, "Coordinates")[3], 1);
}

TEST_F(Translation, NodesThatMoveHaveCoordinatesInTheStep)
{
    Field moved = fieldOf("", Location::Nodes, 3, Floats(12, 7));
    moved.movesNodes = true;
    ModelFile& model = modelOf(withField(moved));
    EXPECT_EQ(model.floats({"Plate"}, "Coordinates", "S"), Floats(12, 7));
    EXPECT_EQ(model.get({"Plate"}, "Coordinates", "S").variableType(), 1U);
}

TEST_F(Translation, SetsAreDatasetsOfOnesAndZeros)
{
    Part part = twoTriangles("Plate");
    part.nodeSets = {{"Fixed", {3, 0}}, {"None", {}}};
    part.elementSets = {{"Fixed", {1}}};
    ModelFile& model = modelOf({{}, {part}, {}});
    EXPECT_EQ(model.numbers({"Plate"}, "Node Set Fixed"), (Numbers{1, 0, 0, 1}));
    EXPECT_EQ(model.numbers({"Plate"}, "Node Set None"), (Numbers{0, 0, 0, 0}));
    EXPECT_EQ(model.numbers({"Plate"}, "Element Set Fixed"), (Numbers{0, 1}));
    EXPECT_EQ(model.get({"Plate"}, "Element Set Fixed").variableType(), 16U);
    EXPECT_EQ(ModelFile::attribute<std::string>(model.get({"Plate"}, "Node Set Fixed").attributes,
                                                "Category"),
              "NodeSet");
}

TEST_F(Translation, AttributesOfTheSourceAreOnTheRootAndTextsKeepTheirFirst256Bytes)
{
    ModelFile& model =
        modelOf({{{"Title", std::string(257, 'x')}, {"Version", 2}}, {twoTriangles("Plate")}, {}});
    MoxRead::Attributes const& attributes = model.rootAttributes();
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Source"), "plate.in");
    EXPECT_EQ(ModelFile::attribute<std::string>(attributes, "Title"), std::string(256, 'x'));
    EXPECT_EQ(ModelFile::attribute<std::uint32_t>(attributes, "Version"), 2U);
    EXPECT_EQ(warnings(), (Names{"The text of the attribute 'Title' was cut to 256 bytes."}));
}

TEST_F(Translation, TheSummaryCountsWhatWasWritten)
{
    Content content = withField(fieldOf("F", Location::Elements, 1, Floats{1, 2}));
    content.parts.push_back(twoTriangles("Other"));
    Summary const summary = translateContent(content);
    EXPECT_EQ(summary.nodes, 8U);
    EXPECT_EQ(summary.elements, 4U);
    EXPECT_EQ(summary.steps, 1U);
    EXPECT_EQ(summary.fields, 1U);
}

TEST_F(Translation, FieldsWithoutComponentsAreToldAndNotCounted)
{
    Content const content = withField(fieldOf("F", Location::Nodes, 0, Floats()));
    EXPECT_EQ(translateContent(content).fields, 0U);
    EXPECT_EQ(warnings(), (Names{"The field 'F' has no components and was left out."}));
}

TEST_F(Translation, WhatNoMemoryHoldsIsToldOfTheInput)
{
    for (bool const isBeyondAllMemory : {false, true}) {
        auto const open = [&](std::filesystem::path const&,
                              Report&) -> std::unique_ptr<SequentialSource> {
            if (isBeyondAllMemory)
                throw std::length_error("vector");
            throw std::bad_alloc();
        };
        try {
            translate(input_, open, output_, {}, report_);
            FAIL() << "it was translated";
        } catch (Error const& error) {
            EXPECT_EQ(error.what(),
                      input_.string() + ": There is not enough memory for this file.");
        }
    }
}

TEST_F(Translation, ProgressIsToldOfTheMeshAndOfEachStep)
{
    using Stages = std::vector<std::pair<std::uint64_t, std::uint64_t>>;
    translateContent(
        {{}, {twoTriangles("Plate")}, {{{"One", 1.0, {}}, {}}, {{"Two", 2.0, {}}, {}}}});
    EXPECT_EQ(told_, (Stages{{1, 3}, {2, 3}, {3, 3}}));
}

TEST_F(Translation, FieldsThatDontFitTheirPartAreRefused)
{
    EXPECT_EQ(complaintAbout(withField(fieldOf("F", Location::Nodes, 1, Floats{1, 2}))),
              input_.string() + ": The field 'F' has 2 values for 4 nodes of 'Plate'.");
    EXPECT_EQ(folder_.names(), (Names{"plate.in"}));
}

TEST_F(Translation, AFileWithoutMeshIsRefused)
{
    EXPECT_EQ(complaintAbout(Content()), input_.string() + ": The file holds no mesh.");
}

TEST_F(Translation, AnExistingOutputIsLeftAloneUnlessItIsToBeOverwritten)
{
    folder_.write("out.mox", "old");
    Content const content = {{}, {twoTriangles("Plate")}, {}};
    EXPECT_EQ(complaintAbout(content), output_.string() + ": File exists.");
    EXPECT_EQ(contentOf(output_), "old");
    overwrite_ = true;
    EXPECT_NO_THROW(modelOf(content));
}

TEST_F(Translation, TheInputItselfIsNeverOverwritten)
{
    overwrite_ = true;
    output_ = input_;
    EXPECT_EQ(complaintAbout({{}, {twoTriangles("Plate")}, {}}),
              input_.string() + ": This is the input itself.");
    EXPECT_EQ(contentOf(input_), "input");
}

TEST_F(Translation, AFullDiskIsToldOfTheOutputAndLeavesNothing)
{
    std::string complaint;
    {
        Support::FileSizeLimit const limit(100);
        complaint = complaintAbout({{}, {twoTriangles("Plate")}, {}});
    }
    EXPECT_EQ(complaint.substr(0, output_.string().size() + 2), output_.string() + ": ");
    EXPECT_EQ(folder_.names(), (Names{"plate.in"}));
}

TEST_F(Translation, AFolderThatIsNotThereIsToldOfTheOutput)
{
    output_ = folder_.path("missing") / "out.mox";
    EXPECT_EQ(complaintAbout({{}, {twoTriangles("Plate")}, {}}),
              output_.string() + ": The file cannot be written: No such file or directory.");
}

} // namespace
