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
using Helper = Zyl2::Mox2::Helper::Attributes;

/// The value as a tree stores it.
template <typename T>
Zyl2Util::AttributeValue converted(T const& value)
{
    AttributeMap entries;
    entries["key"] = value;
    AttributeList const list = Helper::moxAttributeList(entries);
    EXPECT_EQ(list.size(), 1U);
    return list.at("key");
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

TEST(HelperAttributes, ADoubleStaysADouble)
{
    Zyl2Util::AttributeValue const value = converted(0.1);
    ASSERT_EQ(value.GetTag(), 3);
    EXPECT_EQ(value.GetDouble(), 0.1);
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
