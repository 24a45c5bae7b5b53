#include <Zyl2/Mox2/Array1d.h>

#include <gtest/gtest.h>

#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Zyl2::Mox2::Array1d;

template <typename T>
std::vector<T> valuesOf(Array1d<T> const& array)
{
    std::vector<T> values;
    for (unsigned long index = 0; index < array.size(); ++index)
        values.push_back(array(index));
    return values;
}

template <typename T>
class Array1dTest : public testing::Test
{};

using ValueTypes = testing::Types<float, unsigned int>;
TYPED_TEST_SUITE(Array1dTest, ValueTypes, );

TYPED_TEST(Array1dTest, OfASizeAndAValueHoldsTheValueThatOften)
{
    Array1d<TypeParam> const array(3, TypeParam(7));
    EXPECT_EQ(valuesOf(array), std::vector<TypeParam>(3, TypeParam(7)));
}

TYPED_TEST(Array1dTest, OfZeroAndZeroIsASizeAndAValue)
{
    EXPECT_EQ(Array1d<TypeParam>(0, 0).size(), 0U);
    EXPECT_EQ(Array1d<TypeParam>(2, 0).size(), 2U);
}

TYPED_TEST(Array1dTest, OfAListHoldsItsElementsInOrder)
{
    Array1d<TypeParam> const array{TypeParam(3), TypeParam(1), TypeParam(2)};
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{3, 1, 2}));
}

TYPED_TEST(Array1dTest, OfARangeHoldsItsElementsInOrder)
{
    TypeParam source[] = {3, 1, 2, 9};
    EXPECT_EQ(valuesOf(Array1d<TypeParam>(source, source + 3)), (std::vector<TypeParam>{3, 1, 2}));
    TypeParam const* const constant = source;
    EXPECT_EQ(valuesOf(Array1d<TypeParam>(constant + 1, constant + 4)),
              (std::vector<TypeParam>{1, 2, 9}));
    EXPECT_EQ(Array1d<TypeParam>(source, source).size(), 0U);
}

TYPED_TEST(Array1dTest, IsCopiedDeeply)
{
    Array1d<TypeParam> source{1, 2};
    Array1d<TypeParam> copy(source);
    copy(0) = TypeParam(9);
    source(1) = TypeParam(8);
    EXPECT_EQ(valuesOf(source), (std::vector<TypeParam>{1, 8}));
    EXPECT_EQ(valuesOf(copy), (std::vector<TypeParam>{9, 2}));
}

TYPED_TEST(Array1dTest, TakesTheSizeOfWhatIsAssigned)
{
    Array1d<TypeParam> source{1, 2, 3};
    Array1d<TypeParam> target(1, TypeParam(9));
    target = source;
    source(0) = TypeParam(7);
    EXPECT_EQ(valuesOf(target), (std::vector<TypeParam>{1, 2, 3}));
    target = Array1d<TypeParam>(0);
    EXPECT_EQ(target.size(), 0U);
    Array1d<TypeParam> const& same = source;
    source = same;
    EXPECT_EQ(valuesOf(source), (std::vector<TypeParam>{7, 2, 3}));
}

TYPED_TEST(Array1dTest, HasTwoIndexOperatorsThatDoTheSame)
{
    Array1d<TypeParam> array{1, 2};
    array[0] = TypeParam(5);
    array(1) = TypeParam(6);
    Array1d<TypeParam> const& constant = array;
    EXPECT_EQ(&array[0], &array(0));
    EXPECT_EQ(&constant[1], &constant(1));
    EXPECT_EQ(&constant[1], &array[1]);
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{5, 6}));
}

TYPED_TEST(Array1dTest, CopiesAsManyElementsFromASourceAsItHolds)
{
    TypeParam const source[] = {1, 2, 3, 4};
    Array1d<TypeParam> array(3);
    array.copy_from(source);
    EXPECT_EQ(valuesOf(array), (std::vector<TypeParam>{1, 2, 3}));
    Array1d<TypeParam> empty(0);
    empty.copy_from(source);
    EXPECT_EQ(empty.size(), 0U);
}

TYPED_TEST(Array1dTest, OfTwoToThePowerOf31OrMoreCanNotBeHad)
{
    EXPECT_THROW(Array1d<TypeParam>(1UL << 31U), std::bad_alloc);
    // Would be 1 if it were narrowed.
    EXPECT_THROW(Array1d<TypeParam>((1UL << 32U) + 1), std::bad_alloc);
    EXPECT_THROW(Array1d<TypeParam>(1UL << 31U, TypeParam(1)), std::bad_alloc);
    EXPECT_THROW(Array1d<TypeParam>(~0UL), std::bad_alloc);
}

// The same in builds with NDEBUG.

template <typename T>
class Array1dDeathTest : public testing::Test
{};
TYPED_TEST_SUITE(Array1dDeathTest, ValueTypes, );

constexpr char const* IndexContract = "index >= 0 && index < size\\(\\)";

TYPED_TEST(Array1dDeathTest, AnIndexOutsideTheArrayEndsTheProcess)
{
    Array1d<TypeParam> array(3, TypeParam(1));
    Array1d<TypeParam> const& constant = array;
    EXPECT_DEATH(array(3), IndexContract);
    EXPECT_DEATH(array[3], IndexContract);
    EXPECT_DEATH(constant(3), IndexContract);
    EXPECT_DEATH(constant[3], IndexContract);
    EXPECT_DEATH(array(~0UL), IndexContract);
    EXPECT_DEATH(Array1d<TypeParam>(0)(0), IndexContract);
}

TEST(Array1dMoveTest, MovesWithoutACopyAndLeavesAnEmptyArrayThatCanBeUsed)
{
    using Zyl2::Mox2::Array1d;
    Array1d<float> array{1, 2};
    float const* const values = array.data();
    Array1d<float> moved(std::move(array));
    EXPECT_EQ(moved.data(), values);
    EXPECT_EQ(array.size(), 0U); // NOLINT(bugprone-use-after-move)
    array = moved;
    EXPECT_EQ(array.size(), 2U);
    moved = std::move(array);
    EXPECT_EQ(moved[1], 2.0F);
}

} // namespace
