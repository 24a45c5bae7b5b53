#include "Zyl2/Mox2/Adder/ArrayProperty.h"

#include <Zyl2/Mox2/Model.h>

#include "Expectations.h"
#include "OpenDatabase.h"
#include "Zyl2/Mox2/StepData.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

using namespace ModelTests;
using namespace Zyl2::Mox2;
using Variable = Zyl2Mox::Geometry::VarStruct;

Support::Thrown const widthMismatch{3, "Invalid arguments", "checkWidth",
                                    "Zyl2/Mox2/Adder/ArrayProperty", 80};
/// A root with a shape, and datasets of three values.
class ArrayPropertyAdderTest : public testing::Test
{
protected:
    using Column = Adder::ArrayPropertyOf<Array1d<float>>;
    using Table = Adder::ArrayPropertyOf<Array2d<float>>;

    ArrayPropertyAdderTest()
    {
        model_.add(NodeType::RootGroup, "Root");
        shape_ = model_.addShapeBelowRoot("shape");
    }

    Column column(DatasetType type) const { return made<Column>(type, column_); }
    Table table(DatasetType type) const { return made<Table>(type, table_); }

    std::vector<Variable> const& variables()
    {
        return model_.node<Zyl2Mox::Geometry>(shape_)->GetVariables();
    }

    std::size_t heavyBytes()
    {
        return model_.tree().GetFile().GetIndex().GetBlockPosition("Heavy Data");
    }

    OpenDatabase model_;
    unsigned int shape_ = 0;
    Array1d<float> column_{1, 2, 3};
    Array2d<float> table_{1, 3, {4, 5, 6}};

private:
    template <typename AdderT, typename ArrayT>
    AdderT made(DatasetType type, ArrayT const& array) const
    {
        AdderT adder;
        adder.dataset = DatasetOf<ArrayT>("Data", type, array.impl().array, Attributes());
        adder.components = getComponentArray(shape_);
        adder.steps = {StepData{"", {}}};
        return adder;
    }
};

TEST_F(ArrayPropertyAdderTest, AColumnOfCoordinatesIsRefusedAndTheSameTableIsNot)
{
    auto adder = column(DatasetType::Coordinates);
    Support::expectThrown<Zyl2::Exception::InvalidArguments>([&] { adder.update(model_.database); },
                                                             widthMismatch);
    EXPECT_EQ(heavyBytes(), 0U);
    table_ = Array2d<float>(1, 3, {1, 2, 3});
    table(DatasetType::Coordinates).update(model_.database);
    EXPECT_EQ(variables().at(0).name, "Data");
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
    EXPECT_TRUE(variables().empty());
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

TEST_F(ArrayPropertyAdderTest, AValueThatIsNoTypeIsRefusedAfterTheValuesAreWritten)
{
    auto adder = column(DatasetType::NodeIds);
    adder.dataset.type = static_cast<DatasetType>(31);
    Support::expectThrown<Zyl2::Exception::InvalidArguments>(
        [&] { adder.update(model_.database); }, {3, "Can't guess result name for specified type",
                                                 "geomTypeFrom", "Zyl2/Mox2/ArrayProperty"});
    EXPECT_EQ(heavyBytes(), 12U);
    EXPECT_TRUE(variables().empty());
}

TEST_F(ArrayPropertyAdderTest, IsRefusedByADatabaseThatIsNotInWriteMode)
{
    model_.database.openedForWriting = false;
    auto adder = column(DatasetType::Coordinates);
    Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
        [&] { adder.update(model_.database); }, notInWriteMode);
    EXPECT_EQ(heavyBytes(), 0U);
}

} // namespace
