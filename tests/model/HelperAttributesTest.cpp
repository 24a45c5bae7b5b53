#include "Zyl2/Mox2/Helper/Attributes.h"

#include "Expectations.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Zyl2::Exception::InvalidArguments;
using Zyl2::Mox2::AttributeMap;
using Zyl2::Mox2::Attributes;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;
using Helper = Zyl2::Mox2::Helper::Attributes;

/// The value as a tree stores it.
template <typename T>
AttributeValue converted(T const& value)
{
    AttributeMap entries;
    entries["key"] = value;
    AttributeList const list = Helper::moxAttributeList(entries);
    EXPECT_EQ(list.size(), 1U);
    return list.at("key");
}

template <typename T>
void expectInteger(T const& value, std::uint32_t stored)
{
    AttributeValue const result = converted(value);
    ASSERT_EQ(result.GetTag(), 0);
    EXPECT_EQ(result.GetInteger(), stored);
}

template <typename T>
void expectScalarRefused(T const& value)
{
    Support::expectThrown<InvalidArguments>([&] { converted(value); },
                                            ModelTests::unsupportedScalar);
}

template <typename T>
void expectVectorRefused()
{
    for (std::vector<T> const& values : {std::vector<T>(), std::vector<T>(2)})
        Support::expectThrown<InvalidArguments>([&] { converted(values); },
                                                ModelTests::unsupportedVector);
}

TEST(HelperAttributes, OfNoAttributesIsAnEmptyList)
{
    EXPECT_TRUE(Helper::moxAttributeList(Attributes()).empty());
    EXPECT_TRUE(Helper::moxAttributeList(AttributeMap()).empty());
}

TEST(HelperAttributes, AFloatStaysAFloat)
{
    AttributeValue const value = converted(1.5F);
    ASSERT_EQ(value.GetTag(), 1);
    EXPECT_EQ(value.GetFloat(), 1.5F);
}

TEST(HelperAttributes, ADoubleStaysADouble)
{
    AttributeValue const value = converted(0.1);
    ASSERT_EQ(value.GetTag(), 3);
    EXPECT_EQ(value.GetDouble(), 0.1);
}

TEST(HelperAttributes, IntegersKeepTheir32Bits)
{
    expectInteger(5, 5);
    expectInteger(-1, 4294967295U);
    expectInteger(4000000000U, 4000000000U);
}

TEST(HelperAttributes, ALongKeepsItsLow32Bits)
{
    expectInteger(4294967297L, 1);
    expectInteger(-1L, 4294967295U);
    expectInteger(4294967296L, 0);
}

TEST(HelperAttributes, AStringStaysAString)
{
    AttributeValue const value = converted(std::string("text"));
    ASSERT_EQ(value.GetTag(), 2);
    EXPECT_EQ(value.GetText(), "text");
    EXPECT_EQ(converted(std::string()).GetText(), "");
}

TEST(HelperAttributes, AStringIsCutAfter256Characters)
{
    std::string const text = std::string(255, 'a') + 'b';
    EXPECT_EQ(converted(text.substr(1)).GetText(), text.substr(1));
    EXPECT_EQ(converted(text).GetText(), text);
    EXPECT_EQ(converted(text + 'c').GetText(), text);
    EXPECT_EQ(converted(text + std::string(1000, 'c')).GetText(), text);
}

TEST(HelperAttributes, AStringEndsAtItsFirstZeroByte)
{
    EXPECT_EQ(converted(std::string("ab\0cd", 5)).GetText(), "ab");
}

TEST(HelperAttributes, OtherScalarTypesAreRefused)
{
    expectScalarRefused(true);
    expectScalarRefused(std::wstring(L"wide"));
    expectScalarRefused(1UL);
    expectScalarRefused(static_cast<unsigned char>(1));
    expectScalarRefused(static_cast<signed char>(1));
    expectScalarRefused(static_cast<unsigned short>(1));
    expectScalarRefused(static_cast<short>(1));
}

TEST(HelperAttributes, EveryVectorIsRefused)
{
    expectVectorRefused<float>();
    expectVectorRefused<int>();
    expectVectorRefused<unsigned int>();
    expectVectorRefused<std::string>();
    expectVectorRefused<std::wstring>();
    expectVectorRefused<double>();
    expectVectorRefused<unsigned long>();
    expectVectorRefused<long>();
    expectVectorRefused<bool>();
    expectVectorRefused<unsigned char>();
    expectVectorRefused<signed char>();
    expectVectorRefused<unsigned short>();
    expectVectorRefused<short>();
}

TEST(HelperAttributes, ADoubleThatAHostSetsArrivesAsAFloat)
{
    Attributes attributes;
    attributes.set("key", 0.1);
    AttributeList const list = Helper::moxAttributeList(attributes);
    ASSERT_EQ(list.at("key").GetTag(), 1);
    EXPECT_EQ(list.at("key").GetFloat(), 0.1F);
}

TEST(HelperAttributes, EveryEntryKeepsItsName)
{
    Attributes attributes;
    attributes.set("a", 1);
    attributes.set("B", 2.5F);
    attributes.set("", "text");
    AttributeList const list = Helper::moxAttributeList(attributes);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list.at("a").GetInteger(), 1U);
    EXPECT_EQ(list.at("B").GetFloat(), 2.5F);
    EXPECT_EQ(list.at("").GetText(), "text");
}

TEST(HelperAttributes, EntriesAreConvertedInTheByteOrderOfTheirNames)
{
    Attributes attributes;
    attributes.set("a", true);
    attributes.set("B", std::vector<int>{1});
    Support::expectThrown<InvalidArguments>([&] { Helper::moxAttributeList(attributes); },
                                            ModelTests::unsupportedVector);
    attributes.set("A", true);
    Support::expectThrown<InvalidArguments>([&] { Helper::moxAttributeList(attributes); },
                                            ModelTests::unsupportedScalar);
}

} // namespace
