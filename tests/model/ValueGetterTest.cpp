#include "Zyl2/Variant/Visitor/ValueGetter.h"

#include "Zyl2/Mox2/PropertyMap.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Zyl2::Exception::TemplateSpecializationNotDefined;
using Zyl2::Mox2::PropertyValue;
using Zyl2::Variant::Visitor::ValueGetter;

template <typename T>
T valueFrom(PropertyValue const& value)
{
    return boost::apply_visitor(ValueGetter<T>(), value);
}

/// One value for each alternative, in their order.
std::vector<PropertyValue> oneOfEach()
{
    return {PropertyValue(1), PropertyValue(1.0F), PropertyValue(std::string("1")),
            PropertyValue(std::vector<int>{1}), PropertyValue(std::vector<float>{1.0F})};
}

/// Expects every alternative but the one of that number to be refused.
template <typename T>
void expectOnly(int alternative)
{
    for (PropertyValue const& value : oneOfEach()) {
        if (value.which() == alternative)
            continue;
        Support::expectThrown<TemplateSpecializationNotDefined>(
            [&] { valueFrom<T>(value); },
            {19, "Template specialization not defined", "operator()(const AnyT",
             "Zyl2/Variant/Visitor/ValueGetter", 40});
    }
}

TEST(ValueGetter, GivesACopyOfAValueOfItsVeryType)
{
    EXPECT_EQ(valueFrom<float>(PropertyValue(1.5F)), 1.5F);
    std::vector<float> const values{1.5F, 2.5F};
    EXPECT_EQ(valueFrom<std::vector<float>>(PropertyValue(values)), values);
    EXPECT_EQ(valueFrom<std::string>(PropertyValue(std::string("text"))), "text");
}

TEST(ValueGetter, OfFloatRefusesAllOtherTypes)
{
    expectOnly<float>(1);
}

TEST(ValueGetter, OfAVectorOfFloatRefusesAllOtherTypes)
{
    expectOnly<std::vector<float>>(4);
}

TEST(ValueGetter, OfBoolRefusesEveryType)
{
    expectOnly<bool>(-1);
}

TEST(ValueGetter, NamesTheTypeThatWasAskedFor)
{
    Support::expectThrown<TemplateSpecializationNotDefined>(
        [] { valueFrom<float>(PropertyValue(1)); },
        {19, "Template specialization not defined", "ValT = float",
         "Zyl2/Variant/Visitor/ValueGetter", 40});
}

} // namespace
