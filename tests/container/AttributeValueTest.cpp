#include "Zyl2/Util/AttributeList.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace {

using Zyl2Util::AttributeValue;

TEST(AttributeValue, TheTagsAreThoseOfTheFile)
{
    EXPECT_EQ(static_cast<int>(AttributeValue::FromInteger(1).GetTag()), 0);
    EXPECT_EQ(static_cast<int>(AttributeValue::FromFloat(1).GetTag()), 1);
    EXPECT_EQ(static_cast<int>(AttributeValue::FromText("1").GetTag()), 2);
    EXPECT_EQ(static_cast<int>(AttributeValue::FromDouble(1).GetTag()), 3);
}

TEST(AttributeValue, GivesBackWhatItWasMadeFrom)
{
    EXPECT_EQ(AttributeValue::FromInteger(4294967295U).GetInteger(), 4294967295U);
    EXPECT_EQ(AttributeValue::FromFloat(-0.5F).GetFloat(), -0.5F);
    EXPECT_EQ(AttributeValue::FromDouble(1e-300).GetDouble(), 1e-300);
    EXPECT_EQ(AttributeValue::FromText("some text").GetText(), "some text");
    EXPECT_EQ(AttributeValue::FromText("").GetText(), "");
}

TEST(AttributeValue, IsTheIntegerZeroByDefault)
{
    EXPECT_EQ(AttributeValue().GetTag(), AttributeValue::Integer);
    EXPECT_EQ(AttributeValue().GetInteger(), 0U);
}

TEST(AttributeValue, ATextOf256BytesIsKeptWhole)
{
    std::string const text(256, 'a');
    EXPECT_EQ(AttributeValue::FromText(text).GetText(), text);
    EXPECT_TRUE(AttributeValue::FromText(text).IsText(text.c_str()));
}

TEST(AttributeValue, ALongerTextIsCutAt256Bytes)
{
    EXPECT_EQ(AttributeValue::FromText(std::string(257, 'a')).GetText(), std::string(256, 'a'));
}

TEST(AttributeValue, ATextEndsAtItsFirstZeroByte)
{
    EXPECT_EQ(AttributeValue::FromText(std::string("ab\0cd", 5)).GetText(), "ab");
}

TEST(AttributeValue, OnlyATextCanEqualAText)
{
    EXPECT_TRUE(AttributeValue::FromText("Vibration").IsText("Vibration"));
    EXPECT_FALSE(AttributeValue::FromText("Vibration ").IsText("Vibration"));
    EXPECT_FALSE(AttributeValue::FromText("Vib").IsText("Vibration"));
    EXPECT_FALSE(AttributeValue::FromInteger(0).IsText(""));
}

TEST(AttributeValue, AskingForAnotherTypeIsRefused)
{
    EXPECT_THROW(AttributeValue::FromFloat(1).GetDouble(), std::bad_variant_access);
    EXPECT_THROW(AttributeValue::FromText("1").GetInteger(), std::bad_variant_access);
}

TEST(AttributeList, StandsInTheOrderOfPlainStringComparison)
{
    Zyl2Util::AttributeList list;
    list["b"] = AttributeValue::FromInteger(2);
    list["a"] = AttributeValue::FromInteger(1);
    list["B"] = AttributeValue::FromInteger(0);
    std::string names;
    for (auto const& [name, value] : list)
        names += name;
    EXPECT_EQ(names, "Bab");
}

} // namespace
