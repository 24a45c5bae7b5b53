#include "Zyl2/Util/AttributeValue.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace {

using Zyl2Util::AttributeValue;

TEST(AttributeValue, ATextEndsAtItsFirstZeroByte)
{
    EXPECT_EQ(AttributeValue::FromText(std::string("ab\0cd", 5)).GetText(), "ab");
}

TEST(AttributeValue, AskingForAnotherTypeIsRefused)
{
    EXPECT_THROW(AttributeValue::FromFloat(1).GetDouble(), std::bad_variant_access);
    EXPECT_THROW(AttributeValue::FromText("1").GetInteger(), std::bad_variant_access);
}

} // namespace
