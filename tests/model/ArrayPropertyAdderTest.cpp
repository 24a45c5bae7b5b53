#include "Zyl2/Mox2/Adder/ArrayProperty.h"

#include <Zyl2/Mox2/Model.h>

#include "Expectations.h"
#include "OpenDatabase.h"
#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/GetStepList.h"
#include "container/LogCapture.h"
#include "support/KeyContent.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace ModelTests;
using namespace Zyl2::Mox2;
using Variable = Zyl2Mox::Geometry::VarStruct;
using Names = std::vector<std::string>;

Support::Thrown const widthMismatch{3, "Invalid arguments", "checkWidth",
                                    "Zyl2/Mox2/Adder/ArrayProperty", 80};
Support::Thrown const noRecord{14, "Key not found", "GetCurrentNode", "Zyl2/Adt/AdtTree", 219};

std::vector<StepData> stepsNamed(Names const& names)
{
    std::vector<StepData> steps;
    for (std::string const& name : names)
        steps.push_back({name, {}});
    return steps;
}

/// A variable's link as "node:index"; empty when it has none.
std::string linkOf(Variable const& variable)
{
    return variable.linked
               ? std::to_string(variable.linkedNode) + ':' + std::to_string(variable.linkedVariable)
               : "";
}

/// A root with two shapes, and datasets of three values.
class ArrayPropertyAdderTest : public testing::Test
{
protected:
    using Column = Adder::ArrayPropertyOf<Array1d<float>>;
    using Table = Adder::ArrayPropertyOf<Array2d<float>>;

    ArrayPropertyAdderTest()
    {
        model_.add(NodeType::RootGroup, "Root");
        first_ = model_.addShapeBelowRoot("first");
        second_ = model_.addShapeBelowRoot("second");
    }

    Column column(Names const& steps = {""}, DatasetType type = DatasetType::NodeIds) const
    {
        Column adder;
        adder.dataset =
            DatasetOf<Array1d<float>>("Data", type, column_.impl().array, datasetAttributes_);
        adder.components = Array1d<unsigned int>{first_, second_}.impl().array;
        adder.steps = stepsNamed(steps);
        return adder;
    }

    Table table(DatasetType type) const
    {
        Table adder;
        adder.dataset =
            DatasetOf<Array2d<float>>("Data", type, table_.impl().array, datasetAttributes_);
        adder.components = getComponentArray(first_);
        adder.steps = stepsNamed({""});
        return adder;
    }

    std::vector<Variable> const& variables(unsigned int id)
    {
        return model_.node<Zyl2Mox::Geometry>(id)->GetVariables();
    }

    Names variableNames(unsigned int id)
    {
        Names names;
        for (Variable const& variable : variables(id))
            names.push_back(variable.name);
        return names;
    }

    std::uint64_t position(unsigned int id, std::string const& name)
    {
        return model_.node<Zyl2Mox::Geometry>(id)->GetDatasets().at(name);
    }

    std::size_t heavyBytes()
    {
        return model_.tree().GetFile().GetIndex().GetBlockPosition("Heavy Data");
    }

    OpenDatabase model_;
    unsigned int first_ = 0;
    unsigned int second_ = 0;
    Array1d<float> column_{1, 2, 3};
    Array2d<float> table_{1, 3, {4, 5, 6}};
    Attributes datasetAttributes_;
};

TEST_F(ArrayPropertyAdderTest, ANewOneHoldsNothing)
{
    Column const adder;
    EXPECT_EQ(adder.dataset.array.rows(), 0);
    EXPECT_EQ(adder.dataset.name, "");
    EXPECT_EQ(adder.dataset.type, DatasetType::Result10);
    EXPECT_EQ(adder.dataset.width, 1);
    EXPECT_EQ(adder.components.size(), 0);
    EXPECT_TRUE(adder.steps.empty());
}

TEST_F(ArrayPropertyAdderTest, ANewOneAddsNothing)
{
    Column().update(model_.database);
    EXPECT_EQ(heavyBytes(), 0U);
}

TEST_F(ArrayPropertyAdderTest, DescribesTheDatasetOnItsGeometry)
{
    column({""}, DatasetType::Result22).update(model_.database);
    Variable const& variable = variables(first_).at(0);
    EXPECT_EQ(variable.name, "Data");
    EXPECT_EQ(static_cast<unsigned int>(variable.type), 24U);
    EXPECT_EQ(variable.array.kind, Zyl2Mox::ElementCode::Float);
    EXPECT_EQ(variable.array.valueCount, 3);
    EXPECT_EQ(variable.array.width, 1);
    EXPECT_EQ(position(first_, "Data"), 0U);
}

TEST_F(ArrayPropertyAdderTest, CountsRowsTimesWidthValuesOfATable)
{
    table(DatasetType::Coordinates).update(model_.database);
    Variable const& variable = variables(first_).at(0);
    EXPECT_EQ(variable.array.valueCount, 3);
    EXPECT_EQ(variable.array.width, 3);
    EXPECT_EQ(heavyBytes(), 12U);
}

TEST_F(ArrayPropertyAdderTest, MarksUnsignedValuesAsSuch)
{
    Array1d<unsigned int> const values{7};
    Adder::ArrayPropertyOf<Array1d<unsigned int>> adder;
    adder.dataset =
        DatasetOf<Array1d<unsigned int>>(DatasetType::NodeIds, values.impl().array, Attributes());
    adder.components = getComponentArray(first_);
    adder.steps = stepsNamed({""});
    adder.update(model_.database);
    EXPECT_EQ(variables(first_).at(0).array.kind, Zyl2Mox::ElementCode::UnsignedInt);
}

TEST_F(ArrayPropertyAdderTest, AStepsNameFollowsTheDatasetsBehindARecordSeparator)
{
    column({"t1", "", "t2"}).update(model_.database);
    EXPECT_EQ(variableNames(first_), (Names{"Data\x1Et1", "Data", "Data\x1Et2"}));
}

TEST_F(ArrayPropertyAdderTest, TwoIdsAndThreeStepsAreSixRegistrationsOfOneCopyOfTheValues)
{
    column({"s0", "s1", "s2"}).update(model_.database);
    EXPECT_EQ(heavyBytes(), 12U);
    Names const names{"Data\x1Es0", "Data\x1Es1", "Data\x1Es2"};
    std::string const toFirst = std::to_string(first_) + ":0";
    EXPECT_EQ(variableNames(first_), names);
    EXPECT_EQ(variableNames(second_), names);
    EXPECT_EQ(linkOf(variables(first_)[0]), "");
    EXPECT_EQ(linkOf(variables(first_)[1]), toFirst);
    EXPECT_EQ(linkOf(variables(first_)[2]), toFirst);
    for (Variable const& variable : variables(second_))
        EXPECT_EQ(linkOf(variable), toFirst);
}

TEST_F(ArrayPropertyAdderTest, RegistersAllStepsOfAnIdBeforeThoseOfTheNext)
{
    auto adder = column({"s0", "s1"});
    adder.components = Array1d<unsigned int>{second_, 99, first_}.impl().array;
    Support::expectThrown<Zyl2::Exception::KeyNotFound>([&] { adder.update(model_.database); },
                                                        noRecord);
    EXPECT_EQ(variableNames(second_), (Names{"Data\x1Es0", "Data\x1Es1"}));
    EXPECT_TRUE(variables(first_).empty());
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_EQ(model_.tree().GetCurrentId(), 99U);
}

TEST_F(ArrayPropertyAdderTest, LeavesAnUnknownIdCurrentWhereNoNodeCanBeAdded)
{
    auto adder = column();
    adder.components = getComponentArray(99U);
    Support::expectThrown<Zyl2::Exception::KeyNotFound>([&] { adder.update(model_.database); },
                                                        noRecord);
    std::size_t const records = model_.tree().GetNodeCount();
    Support::expectThrown<Zyl2::Exception::KeyNotFound>(
        [&] { model_.add(NodeType::Group, "Lost"); }, currentNodeIsNone);
    EXPECT_EQ(model_.tree().GetNodeCount(), records);
}

TEST_F(ArrayPropertyAdderTest, PassesOverNodesThatAreNoGeometries)
{
    auto adder = column();
    adder.components = Array1d<unsigned int>{1, first_ - 1, second_}.impl().array;
    adder.update(model_.database);
    EXPECT_EQ(linkOf(variables(second_).at(0)), "");
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, ADatasetsAttributeWinsOverAStepsOfTheSameName)
{
    datasetAttributes_.set("Both", 1);
    datasetAttributes_.set("Dataset", 2);
    Attributes stepAttributes;
    stepAttributes.set("Both", 3);
    stepAttributes.set("Step", 4);
    auto adder = column();
    adder.components = getComponentArray(first_);
    adder.steps = getStepList(Step("t1", stepAttributes));
    adder.update(model_.database);
    auto const& attributes = variables(first_).at(0).attributes;
    ASSERT_EQ(attributes.size(), 3U);
    EXPECT_EQ(attributes.at("Both").GetInteger(), 1U);
    EXPECT_EQ(attributes.at("Dataset").GetInteger(), 2U);
    EXPECT_EQ(attributes.at("Step").GetInteger(), 4U);
}

TEST_F(ArrayPropertyAdderTest, AStepOfCategoryVibrationMakesItsVariableVibrate)
{
    auto adder = column({"still", "mode"});
    Attributes attributes;
    attributes.set("Category", "Vibration");
    adder.steps[1].attributes = attributes.map();
    adder.update(model_.database);
    EXPECT_FALSE(variables(first_)[0].vibration);
    EXPECT_TRUE(variables(first_)[1].vibration);
    EXPECT_TRUE(variables(second_)[1].vibration);
}

TEST_F(ArrayPropertyAdderTest, WithoutStepsWritesTheValuesAndRegistersNothing)
{
    column({}).update(model_.database);
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, WithoutIdsWritesNothingAtAll)
{
    auto adder = column();
    adder.components.resize(0);
    adder.update(model_.database);
    EXPECT_EQ(heavyBytes(), 0U);
}

TEST_F(ArrayPropertyAdderTest, WithoutRowsWritesAndRegistersNothing)
{
    column_ = Array1d<float>(0);
    column({""}, DatasetType::Coordinates).update(model_.database);
    table_ = Array2d<float>(0, 3);
    table(DatasetType::NodeIds).update(model_.database);
    EXPECT_EQ(heavyBytes(), 0U);
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, AColumnOfCoordinatesIsRefusedAndTheSameTableIsNot)
{
    auto adder = column({""}, DatasetType::Coordinates);
    Support::expectThrown<Zyl2::Exception::InvalidArguments>([&] { adder.update(model_.database); },
                                                             widthMismatch);
    EXPECT_EQ(heavyBytes(), 0U);
    table_ = Array2d<float>(1, 3, {1, 2, 3});
    table(DatasetType::Coordinates).update(model_.database);
    EXPECT_EQ(variableNames(first_), Names{"Data"});
    EXPECT_EQ(heavyBytes(), 12U);
}

TEST_F(ArrayPropertyAdderTest, MoreRowsThanCanBeCountedAreRefusedBeforeAnythingIsWritten)
{
    // Without columns they take no memory, and their width is wrong too.
    std::decay_t<decltype(table_.impl().array)> const rows(2147483648L, 0);
    auto adder = table(DatasetType::Coordinates);
    adder.dataset.array = rows;
    Support::expectThrown<Zyl2::Exception::OverflowError>(
        [&] { adder.update(model_.database); },
        {12, "Overflow error", "", "Zyl2/Mox2/Adder/ArrayProperty", 72});
    EXPECT_EQ(heavyBytes(), 0U);
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, ATableOfAnotherWidthIsRefused)
{
    for (DatasetType const type : {DatasetType::NodeIds, DatasetType::Displacement6}) {
        auto adder = table(type);
        Support::expectThrown<Zyl2::Exception::InvalidArguments>(
            [&] { adder.update(model_.database); }, widthMismatch);
    }
    EXPECT_EQ(heavyBytes(), 0U);
}

TEST_F(ArrayPropertyAdderTest, ATableWithoutColumnsIsRefused)
{
    table_ = Array2d<float>(2, 0);
    auto adder = table(DatasetType::Coordinates);
    Support::expectThrown<Zyl2::Exception::InvalidArguments>([&] { adder.update(model_.database); },
                                                             widthMismatch);
}

TEST_F(ArrayPropertyAdderTest, ATableOfOneColumnServesTypesOfWidthOne)
{
    table_ = Array2d<float>(2, 1, {1, 2});
    table(DatasetType::NodeIds).update(model_.database);
    EXPECT_EQ(variables(first_).at(0).array.valueCount, 2);
}

TEST_F(ArrayPropertyAdderTest,
       ADatasetsAttributeThatCannotBeStoredIsRefusedAfterTheValuesAreWritten)
{
    datasetAttributes_.set("Flag", true);
    auto adder = column();
    Support::expectThrown<Zyl2::Exception::InvalidArguments>([&] { adder.update(model_.database); },
                                                             unsupportedScalar);
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, AStepsAttributeThatCannotBeStoredLeavesEarlierRegistrationsInPlace)
{
    auto adder = column({"s0", "s1", "s2"});
    Attributes attributes;
    attributes.set("Numbers", std::vector<float>{1});
    adder.steps[1].attributes = attributes.map();
    Support::expectThrown<Zyl2::Exception::InvalidArguments>([&] { adder.update(model_.database); },
                                                             unsupportedVector);
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_EQ(variableNames(first_), Names{"Data\x1Es0"});
    EXPECT_TRUE(variables(second_).empty());
}

TEST_F(ArrayPropertyAdderTest, AValueThatIsNoTypeIsRefusedAfterTheValuesAreWritten)
{
    auto adder = column();
    adder.dataset.type = static_cast<DatasetType>(31);
    Support::expectThrown<Zyl2::Exception::InvalidArguments>(
        [&] { adder.update(model_.database); }, {3, "Can't guess result name for specified type",
                                                 "geomTypeFrom", "Zyl2/Mox2/ArrayProperty"});
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_TRUE(variables(first_).empty());
}

TEST_F(ArrayPropertyAdderTest, TheFirstIdGivenTwiceGetsNoLinkToItself)
{
    auto adder = column();
    adder.components = Array1d<unsigned int>{first_, second_, first_}.impl().array;
    adder.update(model_.database);
    ASSERT_EQ(variables(first_).size(), 1U);
    EXPECT_EQ(linkOf(variables(first_)[0]), "");
    EXPECT_EQ(linkOf(variables(second_).at(0)), std::to_string(first_) + ":0");
}

TEST_F(ArrayPropertyAdderTest, TheFirstStepGivenTwiceGetsNoLinkToItself)
{
    auto adder = column({"s0", "s0"});
    adder.update(model_.database);
    ASSERT_EQ(variables(first_).size(), 1U);
    EXPECT_EQ(linkOf(variables(first_)[0]), "");
    ASSERT_EQ(variables(second_).size(), 1U);
    EXPECT_EQ(linkOf(variables(second_)[0]), std::to_string(first_) + ":0");
}

TEST_F(ArrayPropertyAdderTest, DataOfItsOwnTakesThePlaceOfALink)
{
    column().update(model_.database);
    auto again = column();
    again.components = getComponentArray(second_);
    again.update(model_.database);
    EXPECT_EQ(heavyBytes(), 24U);
    ASSERT_EQ(variables(second_).size(), 1U);
    EXPECT_EQ(linkOf(variables(second_)[0]), "");
    EXPECT_EQ(position(second_, "Data"), 12U);
    EXPECT_EQ(position(first_, "Data"), 0U);
}

TEST_F(ArrayPropertyAdderTest, LinksInTheOtherDirectionLeaveNoCircle)
{
    column().update(model_.database);
    auto again = column();
    again.components = Array1d<unsigned int>{second_, first_}.impl().array;
    again.update(model_.database);
    EXPECT_EQ(linkOf(variables(second_).at(0)), "");
    EXPECT_EQ(linkOf(variables(first_).at(0)), std::to_string(second_) + ":0");
}

TEST_F(ArrayPropertyAdderTest, ALinkHasNoAttributesOfItsOwn)
{
    datasetAttributes_.set("Number", 1);
    column().update(model_.database);
    EXPECT_EQ(variables(first_).at(0).attributes.size(), 1U);
    EXPECT_TRUE(variables(second_).at(0).attributes.empty());
}

TEST_F(ArrayPropertyAdderTest, TellsTheLogOfTheValuesOnceHoweverManyRegistrationsThereAre)
{
    Support::LogCapture const log;
    column({"s0", "s1", "s2"}).update(model_.database);
    EXPECT_EQ(log.Texts(), Names{"Writing Dataset of size 3 width 1 datatype size 4"});
}

TEST_F(ArrayPropertyAdderTest, PutsTheBytesOfTheValuesInPlanes)
{
    table_ = Array2d<float>(2, 1, {1, -2});
    table(DatasetType::NodeIds).update(model_.database);
    auto& index = model_.tree().GetFile().GetIndex();
    EXPECT_EQ(Support::KeyContent(index, "Heavy Data"), std::string("\0\0\0\0\x80\0\x3F\xC0", 8));
}

TEST_F(ArrayPropertyAdderTest, IsRefusedByAClosedDatabaseBeforeAnythingElse)
{
    Database closed;
    Support::expectThrown<Zyl2::Exception::InvalidObjectState>([&] { Column().update(closed); },
                                                               fileNotOpen);
}

TEST_F(ArrayPropertyAdderTest, IsRefusedByADatabaseThatIsNotInWriteMode)
{
    model_.database.openedForWriting = false;
    auto adder = column({""}, DatasetType::Coordinates);
    Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
        [&] { adder.update(model_.database); }, notInWriteMode);
    EXPECT_EQ(heavyBytes(), 0U);
}

} // namespace
