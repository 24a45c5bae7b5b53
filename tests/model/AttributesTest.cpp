#include <Zyl2/Mox2/Attributes.h>

#include "Zyl2/Mox2/AttributeMap.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Zyl2::Mox2::AttributeMap;
using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::AttributeValue;

/// Sets a value and expects it, and it alone, under the alternative of that number.
template <typename T>
void expectStored(int alternative, T const& value)
{
    Attributes attributes;
    attributes.set("key", value);
    ASSERT_EQ(attributes.map().size(), 1U);
    AttributeValue const& stored = attributes.map().at("key");
    EXPECT_EQ(stored.which(), alternative);
    T const* const held = boost::get<T>(&stored);
    ASSERT_NE(held, nullptr);
    EXPECT_TRUE(*held == value);
}

template <typename Given>
void expectStoredText(Given&& given, std::string const& text)
{
    Attributes attributes;
    attributes.set("key", std::forward<Given>(given));
    EXPECT_EQ(attributes.map().at("key").which(), 6);
    EXPECT_EQ(boost::get<std::string>(attributes.map().at("key")), text);
}

template <typename T, typename = void>
struct IsAttribute : std::false_type
{};
template <typename T>
struct IsAttribute<T, decltype(std::declval<Attributes&>().set("key", std::declval<T const&>()))>
    : std::true_type
{};

TEST(Attributes, ADefaultValueIsTheFloatZero)
{
    AttributeValue const value;
    EXPECT_EQ(value.which(), 0);
    EXPECT_EQ(boost::get<float>(value), 0.0F);
}

TEST(Attributes, EveryScalarTypeIsStoredAtItsOwnIndex)
{
    expectStored(0, 1.5F);
    expectStored(2, -2);
    expectStored(4, 4000000000U);
    expectStored(6, std::string("text"));
    expectStored(8, std::wstring(L"wide"));
    expectStored(12, 5000000000UL);
    expectStored(14, -5000000000L);
    expectStored(16, true);
    expectStored(18, static_cast<unsigned char>(200));
    expectStored(20, static_cast<signed char>(-100));
    expectStored(22, static_cast<unsigned short>(60000));
    expectStored(24, static_cast<short>(-30000));
}

TEST(Attributes, EveryVectorTypeIsStoredAtItsOwnIndex)
{
    expectStored(1, std::vector<float>{1.5F, 2.5F});
    expectStored(3, std::vector<int>{-1, 2});
    expectStored(5, std::vector<unsigned int>{1, 2});
    expectStored(7, std::vector<std::string>{"a", "b"});
    expectStored(9, std::vector<std::wstring>{L"a", L"b"});
    expectStored(11, std::vector<double>{0.1, 0.2});
    expectStored(13, std::vector<unsigned long>{1, 2});
    expectStored(15, std::vector<long>{-1, 2});
    expectStored(17, std::vector<bool>{true, false});
    expectStored(19, std::vector<unsigned char>{1, 2});
    expectStored(21, std::vector<signed char>{-1, 2});
    expectStored(23, std::vector<unsigned short>{1, 2});
    expectStored(25, std::vector<short>{-1, 2});
}

TEST(Attributes, ADoubleAlternativeExistsForEntriesThatWereNotSetByAHost)
{
    AttributeMap entries;
    entries["key"] = 0.1;
    Attributes const attributes(entries);
    EXPECT_EQ(attributes.map().at("key").which(), 10);
    EXPECT_EQ(boost::get<double>(attributes.map().at("key")), 0.1);
}

TEST(Attributes, SettingTheDoubleOneTenthStoresTheNearestFloat)
{
    Attributes attributes;
    attributes.set("key", 0.1);
    ASSERT_EQ(attributes.map().at("key").which(), 0);
    EXPECT_EQ(boost::get<float>(attributes.map().at("key")), 0.1F);
    attributes.set<double>("key", 16777217.0);
    EXPECT_EQ(boost::get<float>(attributes.map().at("key")), 16777216.0F);
}

TEST(Attributes, AnIntAndThenAStringUnderTheSameNameLeaveTheString)
{
    Attributes attributes;
    attributes.set("key", 5);
    attributes.set("key", std::string("text"));
    ASSERT_EQ(attributes.map().size(), 1U);
    EXPECT_EQ(attributes.map().at("key").which(), 6);
    EXPECT_EQ(boost::get<std::string>(attributes.map().at("key")), "text");
}

TEST(Attributes, LiteralsAndCharacterBuffersAreStoredAsStrings)
{
    expectStoredText("literal", "literal");
    char buffer[8] = "buf\0fer";
    expectStoredText(buffer, "buf");
    char* pointer = buffer;
    expectStoredText(pointer, "buf");
    char const* constant = buffer;
    expectStoredText(constant, "buf");
    expectStoredText("", "");
}

TEST(Attributes, TypesThatNoAlternativeHoldsDoNotCompile)
{
    EXPECT_TRUE(IsAttribute<int>::value);
    EXPECT_TRUE(IsAttribute<double>::value);
    EXPECT_TRUE((IsAttribute<std::vector<std::wstring>>::value));
    EXPECT_TRUE(IsAttribute<char[4]>::value);
    EXPECT_FALSE(IsAttribute<long long>::value);
    EXPECT_FALSE(IsAttribute<unsigned long long>::value);
    EXPECT_FALSE(IsAttribute<long double>::value);
    EXPECT_FALSE(IsAttribute<char>::value);
    EXPECT_FALSE((IsAttribute<std::vector<char>>::value));
    EXPECT_FALSE((IsAttribute<std::vector<std::vector<int>>>::value));
    EXPECT_FALSE(IsAttribute<wchar_t const*>::value);
    EXPECT_FALSE(IsAttribute<void*>::value);
}

TEST(Attributes, ACopyIsIndependentOfItsSource)
{
    Attributes source;
    source.set("key", 1);
    Attributes copy(source);
    copy.set("key", 2);
    copy.set("other", 3);
    ASSERT_EQ(source.map().size(), 1U);
    EXPECT_EQ(boost::get<int>(source.map().at("key")), 1);
    EXPECT_EQ(boost::get<int>(copy.map().at("key")), 2);
}

TEST(Attributes, AssigningTakesTheContentsAndKeepsTheMapItself)
{
    Attributes source;
    source.set("new", 1);
    Attributes target;
    target.set("old", 2);
    AttributeMap const* const map = &target.map();
    target = source;
    source.set("new", 3);
    EXPECT_EQ(&target.map(), map);
    ASSERT_EQ(target.map().size(), 1U);
    EXPECT_EQ(boost::get<int>(target.map().at("new")), 1);
}

TEST(Attributes, AssigningToItselfChangesNothing)
{
    Attributes attributes;
    attributes.set("key", 1);
    Attributes const& same = attributes;
    attributes = same;
    ASSERT_EQ(attributes.map().size(), 1U);
    EXPECT_EQ(boost::get<int>(attributes.map().at("key")), 1);
}

TEST(Attributes, ATemporaryIsCopiedSoThatItsSourceKeepsAMap)
{
    Attributes source;
    source.set("key", 1);
    // A host may write this, whatever comes of it.
    Attributes const taken(std::move(source)); // NOLINT(performance-move-const-arg)
    EXPECT_EQ(taken.map().size(), 1U);
    // Still usable: an object is never without its map.
    source.set("key", 2); // NOLINT(bugprone-use-after-move): this is what the test is about
    EXPECT_EQ(boost::get<int>(source.map().at("key")), 2);
}

} // namespace
