#include "Zyl2/Mox/Group.h"

#include "Zyl2/Wvf/Block.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using Zyl2::Exception::InvalidArguments;
using Zyl2Mox::Group;
using Zyl2Util::AttributeList;
using Zyl2Util::AttributeValue;

/// Values 1, 2, 3, ...
std::vector<float> Values(std::size_t count)
{
    std::vector<float> values;
    for (std::size_t value = 0; value < count; ++value)
        values.push_back(static_cast<float>(value + 1));
    return values;
}

TEST(Group, SaysWhatItIs)
{
    Group const group("g", AttributeList());
    EXPECT_EQ(group.GetName(), "g");
    EXPECT_EQ(group.GetType(), "Group");
    EXPECT_EQ(group.GetVersion(), "0.4");
    EXPECT_FALSE(group.IsLoaded());
}

TEST(Group, ANewGroupNeitherMovesNorTurnsNorScalesAndHasFlag0)
{
    Group const group("g", AttributeList());
    EXPECT_EQ(group.GetTranslation(), (std::array<float, 3>{0, 0, 0}));
    EXPECT_EQ(group.GetRotation(), (std::array<float, 4>{0, 0, 1, 0}));
    EXPECT_EQ(group.GetScale(), (std::array<float, 3>{1, 1, 1}));
    EXPECT_EQ(group.GetFlag(), 0U);
    EXPECT_TRUE(group.GetAttributes().empty());
}

TEST(Group, HoldsACopyOfItsAttributes)
{
    AttributeList attributes{{"Author", AttributeValue::FromText("x")}};
    Group group("g", attributes);
    attributes["Author"] = AttributeValue::FromText("y");
    ASSERT_EQ(group.GetAttributes().size(), 1U);
    EXPECT_EQ(group.GetAttributes()["Author"].GetText(), "x");
}

TEST(Group, TakesATransformAndAFlag)
{
    Group group("g", AttributeList());
    group.SetTranslation({1, 2, 3});
    group.SetRotation({4, 5, 6, 7});
    group.SetScale({8, 9, 10});
    group.SetFlag(1);
    EXPECT_EQ(group.GetTranslation(), (std::array<float, 3>{1, 2, 3}));
    EXPECT_EQ(group.GetRotation(), (std::array<float, 4>{4, 5, 6, 7}));
    EXPECT_EQ(group.GetScale(), (std::array<float, 3>{8, 9, 10}));
    EXPECT_EQ(group.GetFlag(), 1U);
}

TEST(Group, ATranslationHasThreeValues)
{
    Group group("g", AttributeList());
    for (std::size_t const count : {0U, 2U, 4U})
        Support::expectThrown<InvalidArguments>(
            [&] { group.SetTranslation(Values(count)); },
            {3, "invalid array size", "Group::SetTranslation", "Zyl2/Mox/Group", 82});
    EXPECT_EQ(group.GetTranslation(), (std::array<float, 3>{0, 0, 0}));
}

TEST(Group, ARotationHasFourValues)
{
    Group group("g", AttributeList());
    for (std::size_t const count : {0U, 3U, 5U})
        Support::expectThrown<InvalidArguments>(
            [&] { group.SetRotation(Values(count)); },
            {3, "invalid array size", "Group::SetRotation", "Zyl2/Mox/Group", 104});
    EXPECT_EQ(group.GetRotation(), (std::array<float, 4>{0, 0, 1, 0}));
}

TEST(Group, AScaleHasThreeValues)
{
    Group group("g", AttributeList());
    for (std::size_t const count : {0U, 2U, 4U})
        Support::expectThrown<InvalidArguments>(
            [&] { group.SetScale(Values(count)); },
            {3, "invalid array size", "Group::SetScale", "Zyl2/Mox/Group", 124});
    EXPECT_EQ(group.GetScale(), (std::array<float, 3>{1, 1, 1}));
}

TEST(Group, LoadSaveAndCopyingHaveNoEffect)
{
    Group group("g", {{"a", AttributeValue::FromInteger(1)}});
    Zyl2Wvf::Block block;
    group.Load("somewhere");
    group.Save();
    group.CopyToBlock(block);
    group.CopyFromBlock(block);
    EXPECT_EQ(block.GetLength(), 0U);
    EXPECT_EQ(group.GetAttributes().size(), 1U);
    EXPECT_FALSE(group.IsLoaded());
}

} // namespace
