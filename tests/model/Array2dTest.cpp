#include <Zyl2/Mox2/Array2d.h>

#include "Zyl2/Mox2/Array2dImpl.h"

#include <gtest/gtest.h>

#include <new>
#include <utility>
#include <vector>

namespace {

using Zyl2::Mox2::Array2d;

/// All elements, row after row.
template <typename T>
std::vector<T> valuesOf(Array2d<T> const& array)
{
    std::vector<T> values;
    for (unsigned long row = 0; row < array.rows(); ++row)
        for (unsigned long col = 0; col < array.cols(); ++col)
            values.push_back(array(row, col));
    return values;
}

template <typename T>
void expectShape(Array2d<T> const& array, unsigned long rows, unsigned long cols)
{
    EXPECT_EQ(array.rows(), rows);
    EXPECT_EQ(array.cols(), cols);
    EXPECT_EQ(array.size(), rows * cols);
}

template <typename T>
class Array2dTest : public testing::Test
{};

using TableElements = testing::Types<float, unsigned int>;
TYPED_TEST_SUITE(Array2dTest, TableElements, );

TYPED_TEST(Array2dTest, OfRowsAndColumnsHasThatShape)
{
    expectShape(Array2d<TypeParam>(2, 3), 2, 3);
}

TYPED_TEST(Array2dTest, OfNoRowsIsValidAndEmpty)
{
    expectShape(Array2d<TypeParam>(0, 3), 0, 3);
    expectShape(Array2d<TypeParam>(0, 3, {TypeParam(1), TypeParam(2)}), 0, 3);
    expectShape(Array2d<TypeParam>(2, 0, std::vector<TypeParam>{1}), 2, 0);
    expectShape(Array2d<TypeParam>(0, 0), 0, 0);
}

TYPED_TEST(Array2dTest, OfAListIsFilledRowAfterRow)
{
    Array2d<TypeParam> const array(2, 3, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(array(1, 0), TypeParam(4));
}

TYPED_TEST(Array2dTest, OfAListOfOneElementIsFilledFromItAndNotWithIt)
{
    Array2d<TypeParam> const array(1, 1, {TypeParam(5)});
    EXPECT_EQ(valuesOf(array), std::vector<TypeParam>{5});
    Array2d<TypeParam> const pair(1, 2, {TypeParam(5), TypeParam(6)});
    EXPECT_EQ(valuesOf(pair), (std::vector<TypeParam>{5, 6}));
}

TYPED_TEST(Array2dTest, OfAVectorOrARangeIsFilledRowAfterRow)
{
    std::vector<TypeParam> source{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(3, 2, source)), source);
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(3, 2, source.data(), source.data() + 6)), source);
    TypeParam const* const constant = source.data();
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(2, 3, constant, constant + 6)), source);
}

TYPED_TEST(Array2dTest, OfAShortSourceSetsWhatThereIs)
{
    std::vector<TypeParam> const source{1, 2, 3};
    for (Array2d<TypeParam> const& array :
         {Array2d<TypeParam>(2, 2, {1, 2, 3}), Array2d<TypeParam>(2, 2, source),
          Array2d<TypeParam>(2, 2, source.data(), source.data() + 3)}) {
        expectShape(array, 2, 2);
        EXPECT_EQ(array(0, 0), TypeParam(1));
        EXPECT_EQ(array(0, 1), TypeParam(2));
        EXPECT_EQ(array(1, 0), TypeParam(3));
    }
    expectShape(Array2d<TypeParam>(2, 2, std::vector<TypeParam>()), 2, 2);
}

TYPED_TEST(Array2dTest, OfALongSourceIgnoresTheSurplus)
{
    std::vector<TypeParam> const source{1, 2, 3};
    std::vector<TypeParam> const first{1, 2};
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(1, 2, {1, 2, 3})), first);
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(1, 2, source)), first);
    EXPECT_EQ(valuesOf(Array2d<TypeParam>(1, 2, source.data(), source.data() + 3)), first);
}

TYPED_TEST(Array2dTest, KeepsItsRowsContiguous)
{
    Array2d<TypeParam> array(3, 4, TypeParam(0));
    for (unsigned long row = 0; row < 3; ++row)
        for (unsigned long col = 0; col < 4; ++col)
            EXPECT_EQ(&array(row, col), &array(0, 0) + row * array.cols() + col);
    EXPECT_EQ(array.impl().array.data(), &array(0, 0));
}

TYPED_TEST(Array2dTest, IsCopiedDeeply)
{
    Array2d<TypeParam> source(1, 2, {1, 2});
    Array2d<TypeParam> copy(source);
    copy(0, 0) = TypeParam(9);
    source(0, 1) = TypeParam(8);
    EXPECT_EQ(valuesOf(source), (std::vector<TypeParam>{1, 8}));
    EXPECT_EQ(valuesOf(copy), (std::vector<TypeParam>{9, 2}));
}

TYPED_TEST(Array2dTest, TakesTheShapeOfWhatIsAssigned)
{
    Array2d<TypeParam> source(3, 2, {1, 2, 3, 4, 5, 6});
    Array2d<TypeParam> target(1, 1, TypeParam(9));
    target = source;
    source(0, 0) = TypeParam(7);
    expectShape(target, 3, 2);
    EXPECT_EQ(valuesOf(target), (std::vector<TypeParam>{1, 2, 3, 4, 5, 6}));
    target = Array2d<TypeParam>(0, 3);
    expectShape(target, 0, 3);
}

TYPED_TEST(Array2dTest, AssigningToItselfChangesNothing)
{
    Array2d<TypeParam> array(1, 2, {1, 2});
    Array2d<TypeParam> const& same = array;
    array = same;
    expectShape(array, 1, 2);
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{1, 2}));
}

TYPED_TEST(Array2dTest, CopiesAsManyElementsFromASourceAsItHolds)
{
    TypeParam const source[] = {1, 2, 3, 4, 5};
    Array2d<TypeParam> array(2, 2);
    array.copy_from(source);
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{1, 2, 3, 4}));
}

TYPED_TEST(Array2dTest, OfTwoToThePowerOf31RowsOrColumnsCanNotBeHad)
{
    EXPECT_THROW(Array2d<TypeParam>(1UL << 31U, 1), std::bad_alloc);
    EXPECT_THROW(Array2d<TypeParam>(1, 1UL << 31U), std::bad_alloc);
    // Would be 1 x 1 if they were narrowed.
    EXPECT_THROW(Array2d<TypeParam>((1UL << 32U) + 1, (1UL << 32U) + 1), std::bad_alloc);
    EXPECT_THROW(Array2d<TypeParam>(0, 1UL << 31U, TypeParam(1)), std::bad_alloc);
    EXPECT_THROW(Array2d<TypeParam>(1UL << 31U, 0, std::vector<TypeParam>{1}), std::bad_alloc);
}

// The same in builds with NDEBUG.

template <typename T>
class Array2dDeathTest : public testing::Test
{};
TYPED_TEST_SUITE(Array2dDeathTest, TableElements, );

constexpr char const* PlaceContract =
    "row >= 0 && row < rows\\(\\) && col >= 0 && col < cols\\(\\)";

TYPED_TEST(Array2dDeathTest, ARowOrColumnOutsideTheTableEndsTheProcess)
{
    Array2d<TypeParam> array(2, 3, TypeParam(1));
    Array2d<TypeParam> const& constant = array;
    EXPECT_DEATH(array(2, 0), PlaceContract);
    EXPECT_DEATH(array(0, 3), PlaceContract);
    EXPECT_DEATH(constant(2, 0), PlaceContract);
    EXPECT_DEATH(constant(0, 3), PlaceContract);
    EXPECT_DEATH(array(~0UL, 0), PlaceContract);
    EXPECT_DEATH(array(0, ~0UL), PlaceContract);
}

TYPED_TEST(Array2dTest, MovesWithoutACopyAndLeavesAnEmptyTableThatCanBeUsed)
{
    Array2d<TypeParam> array(2, 3, {1, 2, 3, 4, 5, 6});
    TypeParam const* const values = array.data();
    Array2d<TypeParam> moved(std::move(array));
    EXPECT_EQ(moved.data(), values);
    expectShape(array, 0, 0); // NOLINT(bugprone-use-after-move)
    Array2d<TypeParam> const copyOfNothing(array);
    expectShape(copyOfNothing, 0, 0);
    array = moved;
    expectShape(array, 2, 3);
    Array2d<TypeParam> other(1, 1);
    other = std::move(moved);
    EXPECT_EQ(other.data(), values);
    expectShape(moved, 0, 0); // NOLINT(bugprone-use-after-move)
    other = std::move(moved);
    expectShape(other, 0, 0);
}

} // namespace
