#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/NodeType.h>

#include "Zyl2/Mox2/PropertyMap.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Zyl2::Mox2::NodeProperties;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;
using Zyl2::Mox2::PropertyValue;

constexpr PropertyType Type = PropertyType::Scale;

/// Sets a value and expects `held`, and it alone, under the alternative of that number.
template <typename Given, typename Held>
void expectStored(Given&& given, int alternative, Held const& held)
{
    NodeProperties properties;
    properties.set(Type, std::forward<Given>(given));
    ASSERT_EQ(properties.map().size(), 1U);
    PropertyValue const& stored = properties.map().at(Type);
    EXPECT_EQ(stored.which(), alternative);
    Held const* const value = boost::get<Held>(&stored);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, held);
}

template <typename T, typename = void>
struct IsProperty : std::false_type
{};
template <typename T>
struct IsProperty<T, decltype(std::declval<NodeProperties&>().set(Type, std::declval<T const&>()))>
    : std::true_type
{};

TEST(NodeProperties, ADefaultValueIsTheIntZero)
{
    PropertyValue const value;
    EXPECT_EQ(value.which(), 0);
    EXPECT_EQ(boost::get<int>(value), 0);
}

TEST(NodeProperties, EveryTypeIsStoredAtItsOwnIndex)
{
    expectStored(-5, 0, -5);
    expectStored(1.5F, 1, 1.5F);
    expectStored(std::string("text"), 2, std::string("text"));
    expectStored(std::vector<int>{1, 2}, 3, std::vector<int>{1, 2});
    expectStored(std::vector<float>{1.5F}, 4, std::vector<float>{1.5F});
}

TEST(NodeProperties, ABoolIsStoredAsTheIntZeroOrOne)
{
    expectStored(true, 0, 1);
    expectStored(false, 0, 0);
}

TEST(NodeProperties, ADoubleIsNarrowedToTheNearestFloat)
{
    expectStored(0.1, 1, 0.1F);
}

TEST(NodeProperties, LiteralsAndCharacterBuffersAreStoredAsStrings)
{
    expectStored("literal", 2, std::string("literal"));
    char buffer[4] = "buf";
    expectStored(buffer, 2, std::string("buf"));
    char* pointer = buffer;
    expectStored(pointer, 2, std::string("buf"));
}

TEST(NodeProperties, TypesThatNoAlternativeHoldsDoNotCompile)
{
    EXPECT_TRUE(IsProperty<bool>::value);
    EXPECT_TRUE(IsProperty<std::vector<float>>::value);
    EXPECT_FALSE(IsProperty<unsigned int>::value);
    EXPECT_FALSE(IsProperty<long>::value);
    EXPECT_FALSE((IsProperty<std::vector<double>>::value));
    EXPECT_FALSE(IsProperty<std::wstring>::value);
}

TEST(NodeProperties, SettingAPropertyTwiceKeepsOnlyTheLastValueAndType)
{
    NodeProperties properties;
    properties.set(Type, 1);
    properties.set(Type, 2.5F);
    ASSERT_EQ(properties.map().size(), 1U);
    EXPECT_EQ(boost::get<float>(properties.map().at(Type)), 2.5F);
    properties.set(Type, 3.5F);
    EXPECT_EQ(boost::get<float>(properties.map().at(Type)), 3.5F);
}

TEST(NodeProperties, ACopyIsIndependentOfItsSource)
{
    NodeProperties source;
    source.set(Type, 1);
    NodeProperties copy(source);
    copy.set(Type, 2);
    EXPECT_EQ(boost::get<int>(source.map().at(Type)), 1);
    EXPECT_EQ(boost::get<int>(copy.map().at(Type)), 2);
}

TEST(NodeProperties, AssigningTakesTheContentsAndKeepsTheMapItself)
{
    NodeProperties source;
    source.set(PropertyType::Scale, 1);
    NodeProperties target;
    target.set(PropertyType::Rotation, 2);
    auto const* const map = &target.map();
    target = source;
    source.set(PropertyType::Scale, 3);
    EXPECT_EQ(&target.map(), map);
    ASSERT_EQ(target.map().size(), 1U);
    EXPECT_EQ(boost::get<int>(target.map().at(PropertyType::Scale)), 1);
}

TEST(NodeProperties, AssigningToItselfChangesNothing)
{
    NodeProperties properties;
    properties.set(Type, 1);
    NodeProperties const& same = properties;
    properties = same;
    ASSERT_EQ(properties.map().size(), 1U);
    EXPECT_EQ(boost::get<int>(properties.map().at(Type)), 1);
}

TEST(NodeProperties, ATemporaryIsCopiedSoThatItsSourceKeepsAMap)
{
    NodeProperties source;
    source.set(Type, 1);
    // A host may write this, whatever comes of it.
    NodeProperties const taken(std::move(source)); // NOLINT(performance-move-const-arg)
    EXPECT_EQ(taken.map().size(), 1U);
    // Still usable: an object is never without its map.
    source.set(Type, 2); // NOLINT(bugprone-use-after-move): this is what the test is about
    EXPECT_EQ(boost::get<int>(source.map().at(Type)), 2);
}

TEST(NodeProperties, TheEnumerationsHaveTheValuesThatHostsWereCompiledWith)
{
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Translation), 0U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Rotation), 1U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Scale), 2U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::DiffuseColor), 3U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::SpecularColor), 4U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::EmissiveColor), 5U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::AmbientColor), 6U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Transparency), 7U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::AmbientIntensity), 8U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Shininess), 9U);
    EXPECT_EQ(static_cast<unsigned int>(PropertyType::Unsupported), 10U);
    EXPECT_EQ(sizeof(PropertyType), 4U);

    EXPECT_EQ(static_cast<int>(NodeType::FlaggedRootGroup), 1);
    EXPECT_EQ(static_cast<int>(NodeType::RootGroup), 2);
    EXPECT_EQ(static_cast<int>(NodeType::Group), 3);
    EXPECT_EQ(static_cast<int>(NodeType::Shape), 4);
    EXPECT_TRUE((std::is_same<std::underlying_type<NodeType>::type, int>::value));
}

} // namespace
