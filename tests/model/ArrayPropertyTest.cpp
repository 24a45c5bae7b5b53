#include "Zyl2/Mox2/ArrayProperty.h"

#include <Zyl2/Mox2/Model.h>

#include "Zyl2/Mox2/AttributeMap.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using Zyl2::Exception::InvalidArguments;

char const* const noName = nullptr;

struct ExpectedType
{
    unsigned int value;
    DatasetType type;
    char const* name;
    unsigned int width;
    unsigned int variableType;
};

std::vector<ExpectedType> const types{
    {0, DatasetType::Connectivity1, "Connectivity", 1, 4},
    {1, DatasetType::Connectivity2, "Connectivity", 1, 5},
    {2, DatasetType::Connectivity3, "Connectivity", 1, 6},
    {3, DatasetType::Polylength1, "Polylength", 1, 9},
    {4, DatasetType::Polylength2, "Polylength", 1, 9},
    {5, DatasetType::Polylength3, "Polylength", 1, 9},
    {6, DatasetType::PartElements1, "Part Elements", 1, 4},
    {7, DatasetType::PartElements2, "Part Elements", 1, 5},
    {8, DatasetType::PartElements3, "Part Elements", 1, 6},
    {9, DatasetType::Coordinates, "Coordinates", 3, 1},
    {10, DatasetType::Result10, noName, 1, 12},
    {11, DatasetType::Result11, noName, 3, 13},
    {12, DatasetType::Result12, noName, 6, 14},
    {13, DatasetType::Result13, noName, 6, 15},
    {14, DatasetType::Result14, noName, 1, 16},
    {15, DatasetType::Result15, noName, 3, 17},
    {16, DatasetType::Result16, noName, 6, 18},
    {17, DatasetType::Result17, noName, 6, 19},
    {18, DatasetType::Result18, noName, 1, 20},
    {19, DatasetType::Result19, noName, 3, 21},
    {20, DatasetType::Result20, noName, 6, 22},
    {21, DatasetType::Result21, noName, 6, 23},
    {22, DatasetType::Result22, noName, 1, 24},
    {23, DatasetType::Result23, noName, 1, 25},
    {24, DatasetType::Result24, noName, 3, 26},
    {25, DatasetType::Result25, noName, 6, 27},
    {26, DatasetType::Result26, noName, 6, 28},
    {27, DatasetType::NodeIds, "Node Ids", 1, 12},
    {28, DatasetType::ElementIds, "Element IDs", 1, 16},
    {29, DatasetType::Displacement, "Displacement", 3, 13},
    {30, DatasetType::Displacement6, "Displacement", 6, 14},
};

template <typename PublicArrayT>
class ArrayPropertyTest : public testing::Test
{
protected:
    static Support::Thrown unknown(char const* what, char const* function)
    {
        return {3, std::string("Can't guess result ") + what + " for specified type", function,
                "Zyl2/Mox2/ArrayProperty", 0};
    }

    typename DatasetOf<PublicArrayT>::ArrayType const array_;
    Attributes const attributes_;
};

using PublicArrays =
    testing::Types<Array1d<float>, Array1d<unsigned int>, Array2d<float>, Array2d<unsigned int>>;
TYPED_TEST_SUITE(ArrayPropertyTest, PublicArrays, );

TYPED_TEST(ArrayPropertyTest, KnowsAllThirtyOneTypes)
{
    using Dataset = DatasetOf<TypeParam>;
    ASSERT_EQ(types.size(), 31U);
    for (ExpectedType const& expected : types) {
        SCOPED_TRACE(expected.value);
        EXPECT_EQ(static_cast<unsigned int>(expected.type), expected.value);
        EXPECT_EQ(Dataset::widthFrom(expected.type), expected.width);
        EXPECT_EQ(static_cast<unsigned int>(Dataset::geomTypeFrom(expected.type)),
                  expected.variableType);
        if (expected.name != noName) {
            EXPECT_EQ(Dataset::nameFrom(expected.type), expected.name);
        }
    }
}

TYPED_TEST(ArrayPropertyTest, CannotGuessTheNameOfResults)
{
    using Dataset = DatasetOf<TypeParam>;
    int withoutName = 0;
    for (ExpectedType const& expected : types)
        if (expected.name == noName) {
            ++withoutName;
            Support::expectThrown<InvalidArguments>([&] { Dataset::nameFrom(expected.type); },
                                                    TestFixture::unknown("name", "nameFrom"));
        }
    EXPECT_EQ(withoutName, 17);
}

TYPED_TEST(ArrayPropertyTest, CannotGuessAnythingOfAValueThatIsNoType)
{
    using Dataset = DatasetOf<TypeParam>;
    for (unsigned int const value : {31U, 255U, 256U, 4294967295U}) {
        auto const type = static_cast<DatasetType>(value);
        Support::expectThrown<InvalidArguments>([&] { Dataset::nameFrom(type); },
                                                TestFixture::unknown("name", "nameFrom"));
        Support::expectThrown<InvalidArguments>([&] { Dataset::widthFrom(type); },
                                                TestFixture::unknown("width", "widthFrom"));
        Support::expectThrown<InvalidArguments>([&] { Dataset::geomTypeFrom(type); },
                                                TestFixture::unknown("name", "geomTypeFrom"));
    }
}

TYPED_TEST(ArrayPropertyTest, WithoutANameGetsThatOfItsType)
{
    for (ExpectedType const& expected : types) {
        if (expected.name == noName)
            continue;
        DatasetOf<TypeParam> const dataset(expected.type, this->array_, this->attributes_);
        EXPECT_EQ(dataset.name, expected.name);
        EXPECT_EQ(dataset.type, expected.type);
        EXPECT_EQ(dataset.width, expected.width);
    }
}

TYPED_TEST(ArrayPropertyTest, WithANameKeepsIt)
{
    for (ExpectedType const& expected : types) {
        DatasetOf<TypeParam> const dataset("Own", expected.type, this->array_, this->attributes_);
        EXPECT_EQ(dataset.name, "Own");
        EXPECT_EQ(dataset.type, expected.type);
        EXPECT_EQ(dataset.width, expected.width);
    }
}

TYPED_TEST(ArrayPropertyTest, OfAResultNeedsAName)
{
    using Dataset = DatasetOf<TypeParam>;
    Support::expectThrown<InvalidArguments>(
        [&] { Dataset(DatasetType::Result15, this->array_, this->attributes_); },
        TestFixture::unknown("name", "nameFrom"));
    EXPECT_EQ(Dataset("Own", DatasetType::Result15, this->array_, this->attributes_).width, 3);
}

TYPED_TEST(ArrayPropertyTest, OfAValueThatIsNoTypeIsRefusedForItsNameAndThenForItsWidth)
{
    using Dataset = DatasetOf<TypeParam>;
    auto const type = static_cast<DatasetType>(31);
    Support::expectThrown<InvalidArguments>(
        [&] { static_cast<void>(Dataset(type, this->array_, this->attributes_)); },
        TestFixture::unknown("name", "nameFrom"));
    Support::expectThrown<InvalidArguments>(
        [&] { Dataset("Own", type, this->array_, this->attributes_); },
        TestFixture::unknown("width", "widthFrom"));
}

TYPED_TEST(ArrayPropertyTest, ANewOneHoldsNothingAndHasAWidthOfOne)
{
    DatasetOf<TypeParam> const dataset;
    EXPECT_EQ(dataset.array.rows(), 0);
    EXPECT_TRUE(dataset.attributes.map().empty());
    EXPECT_EQ(dataset.name, "");
    EXPECT_EQ(dataset.type, DatasetType::Result10);
    EXPECT_EQ(dataset.width, 1);
}

TYPED_TEST(ArrayPropertyTest, CopiesItsAttributes)
{
    Attributes attributes;
    attributes.set("Number", 7);
    DatasetOf<TypeParam> const dataset(DatasetType::NodeIds, this->array_, attributes);
    attributes.set("Number", 8);
    EXPECT_EQ(boost::get<int>(dataset.attributes.map().at("Number")), 7);
}

TYPED_TEST(ArrayPropertyTest, CanBeDestroyedThroughItsBase)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<DatasetOf<TypeParam>>);
}

TEST(ArrayProperty, LooksAtTheValuesOfAColumn)
{
    Array1d<float> const values{1, 2, 3};
    DatasetOf<Array1d<float>> const dataset(DatasetType::NodeIds, values.impl().array,
                                            Attributes());
    EXPECT_EQ(dataset.array.data(), &values(0));
    EXPECT_EQ(dataset.array.rows(), 3);
    EXPECT_EQ(dataset.array.cols(), 1);
}

TEST(ArrayProperty, LooksAtTheValuesOfATable)
{
    Array2d<unsigned int> const values(2, 3, {1, 2, 3, 4, 5, 6});
    DatasetOf<Array2d<unsigned int>> const dataset(DatasetType::Displacement, values.impl().array,
                                                   Attributes());
    EXPECT_EQ(dataset.array.data(), &values(0, 0));
    EXPECT_EQ(dataset.array.rows(), 2);
    EXPECT_EQ(dataset.array.cols(), 3);
}

} // namespace
