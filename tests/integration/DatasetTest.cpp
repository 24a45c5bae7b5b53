#include "integration/CheckedModel.h"
#include "integration/Comparison.h"
#include "integration/DatasetTypes.h"

#include "container/TemporaryFile.h"

#include <gtest/gtest.h>

#include <limits>

namespace Integration {

namespace {

using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;

class DatasetTest : public testing::Test
{
protected:
    DatasetTest()
    {
        model.save();
        model.addNode(NodeType::RootGroup, "root");
        for (int count = 0; count < 3; ++count) {
            model.setCurrentNodeId(1);
            shapes.push_back(model.addNode(NodeType::Shape, "shape " + std::to_string(count)));
        }
    }

    ArrayCall call(DatasetType type, Element element, std::size_t rows)
    {
        ArrayCall result;
        result.type = type;
        result.values = Values::anyBits(random, element, factsOf(type).width, rows);
        result.ids = {shapes[0]};
        return result;
    }

    Support::TemporaryFolder folder;
    CheckedModel model{folder.File("datasets.mox")};
    std::vector<unsigned int> shapes;
    Random random{20240};
};

NamedStep step(std::string const& name)
{
    NamedStep result;
    result.name = name;
    return result;
}

} // namespace

TEST_F(DatasetTest, EveryTypeReadsBackAsTableAndAsColumnOfBothElementTypes)
{
    for (DatasetTypeFacts const& facts : datasetTypes()) {
        for (Element const element : {Element::Float, Element::Uint32}) {
            for (bool const asColumn : {false, true}) {
                if (asColumn && facts.width != 1)
                    continue;
                ArrayCall given = call(facts.type, element, 7);
                given.asColumn = asColumn;
                given.name = "dataset " + std::to_string(model.expected().heavyLength());
                model.addArray(given);
            }
        }
    }
    model.closeAndCompare();
}

TEST_F(DatasetTest, TypesWithADefaultNameNeedNone)
{
    for (DatasetTypeFacts const& facts : datasetTypes()) {
        if (facts.defaultName == nullptr)
            continue;
        ArrayCall given = call(facts.type, Element::Uint32, 3);
        // Several types share a name.
        given.steps = {step(std::to_string(static_cast<unsigned int>(facts.type)))};
        model.addArray(given);
    }
    EXPECT_EQ(model.expected().node(shapes[0]).variables.size(), 14U);
    model.closeAndCompare();
}

TEST_F(DatasetTest, All32FormsOfTheCallStoreTheSame)
{
    int forms = 0;
    for (Element const element : {Element::Float, Element::Uint32})
        for (bool const asColumn : {false, true})
            for (bool const isNamed : {false, true})
                for (bool const asSingleId : {false, true})
                    for (bool const asSingleStep : {false, true}) {
                        ArrayCall given = call(DatasetType::NodeIds, element, 5);
                        given.asColumn = asColumn;
                        given.asSingleId = asSingleId;
                        given.asSingleStep = asSingleStep;
                        given.steps = {step("form " + std::to_string(++forms))};
                        given.steps[0].attributes.set("Of", "step");
                        given.attributes.set("Of dataset", forms);
                        if (isNamed)
                            given.name = "named";
                        model.addArray(given);
                    }
    EXPECT_EQ(forms, 32);
    EXPECT_EQ(model.expected().node(shapes[0]).variables.size(), 32U);
    model.closeAndCompare();
}

TEST_F(DatasetTest, HundredThousandRowsReadBack)
{
    ArrayCall ids = call(DatasetType::NodeIds, Element::Uint32, 1);
    ids.values = Values::ascending(Element::Uint32, 1, 100000);
    ids.asColumn = true;
    model.addArray(ids);
    model.addArray(call(DatasetType::Displacement, Element::Float, 100000));
    model.addArray(call(DatasetType::Displacement6, Element::Uint32, 100000));
    model.closeAndCompare();
}

TEST_F(DatasetTest, NoRowsOrNoIdsAddNothing)
{
    model.addArray(call(DatasetType::Coordinates, Element::Float, 0));
    ArrayCall given = call(DatasetType::Coordinates, Element::Float, 5);
    given.ids = {};
    model.addArray(given);
    EXPECT_EQ(model.expected().heavyLength(), 0U);
    model.closeAndCompare();
}

TEST_F(DatasetTest, ValuesThatAreNoNumbersReadBackBitForBit)
{
    ArrayCall given = call(DatasetType::Coordinates, Element::Float, 1);
    given.values.words = {0x7FC00001, 0xFFC12345, 0x7F800001, 0x7F800000, 0xFF800000,
                          0x80000000, 0x00000001, 0x7F7FFFFF, 0x3DCCCCCD};
    model.addArray(given);
    model.closeAndCompare();
}

TEST_F(DatasetTest, AttributesThatTellOfTheSourceAreNotStored)
{
    ArrayCall given = call(DatasetType::Displacement, Element::Float, 4);
    for (char const* name : {"Complex", "Contents", "DataSource", "DataType", "Structure", "Link.",
                             "Link.Target", "Link", "Complexity", "complex"})
        given.attributes.set(name, 1);
    model.addArray(given);
    EXPECT_EQ(model.expected().node(shapes[0]).variables[0].attributes.size(), 3U);
    model.closeAndCompare();
}

TEST_F(DatasetTest, TheCategoryVibrationSetsTheFlag)
{
    for (char const* category : {"Vibration", "vibration", "", "Vibrations"}) {
        ArrayCall given = call(DatasetType::Displacement, Element::Float, 2);
        given.steps = {step(std::string("mode ") + category)};
        given.steps[0].attributes.set("Category", category);
        model.addArray(given);
    }
    std::vector<ExpectedVariable> const& variables = model.expected().node(shapes[0]).variables;
    EXPECT_TRUE(variables[0].vibration);
    EXPECT_FALSE(variables[1].vibration);
    model.closeAndCompare();
}

TEST_F(DatasetTest, NamesOfDatasetsAndStepsAreAnyBytes)
{
    for (std::string const& name :
         {std::string(), std::string("\x1E"),
          std::string("a\x1E"
                      "b"),
          std::string("\xFF\x80"), std::string("zero\0byte", 9), std::string(300, 'n')}) {
        ArrayCall given = call(DatasetType::Result11, Element::Float, 2);
        given.name = name;
        given.steps = {step(""), step("step"), step("\xC3\xA4\x1E"), step(std::string(300, 's'))};
        model.addArray(given);
    }
    model.closeAndCompare();
}

TEST_F(DatasetTest, TheHostMayChangeItsArrayAfterTheCall)
{
    using namespace Zyl2::Mox2;
    std::string const path = folder.File("changed.mox");
    ExpectedModel expected;
    Model host;
    host.saveTo(path);
    ArrayCall given;
    given.type = DatasetType::Coordinates;
    given.values = Values::ascending(Element::Float, 3, 1000);
    expected.addNode(NodeType::RootGroup, "root", AttributeSet());
    host.addNode(NodeType::RootGroup, "root");
    given.ids = {expected.addNode(NodeType::Shape, "shape", AttributeSet())};
    host.addNode(NodeType::Shape, "shape");
    expected.addArray(given);
    {
        Array2d<float> array(1000, 3, given.values.as<float>());
        host.addArrayProperty(given.type, array, given.ids[0], Step());
        for (unsigned long row = 0; row < array.rows(); ++row)
            array(row, 0) = -1.0F;
    }
    host.close();
    expectFile(path, expected);
}

} // namespace Integration
