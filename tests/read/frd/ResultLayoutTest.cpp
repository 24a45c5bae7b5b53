#include <read/frd/ResultLayout.h>

#include <gtest/gtest.h>

namespace {

using Frd::Component;
using Frd::ResultBlock;
using Order = std::vector<std::size_t>;

ResultBlock blockOf(std::string const& name, std::vector<Component> const& components)
{
    ResultBlock block{};
    block.name = name;
    block.components = components;
    return block;
}

std::vector<Component> const vectorComponents = {
    {"D1", 2, 1, 0, true}, {"D2", 2, 2, 0, true}, {"D3", 2, 3, 0, true}, {"ALL", 2, 0, 0, false}};

std::vector<Component> const tensorComponents = {{"SXX", 4, 1, 1, true}, {"SYY", 4, 2, 2, true},
                                                 {"SZZ", 4, 3, 3, true}, {"SXY", 4, 1, 2, true},
                                                 {"SYZ", 4, 2, 3, true}, {"SZX", 4, 3, 1, true}};

TEST(ResultLayout, ComponentsAreOrderedByTheirRowsAndColumns)
{
    auto const vector = layoutsOf(blockOf("FORC", {{"F3", 2, 3, 0, true},
                                                   {"ALL", 2, 0, 0, false},
                                                   {"F1", 2, 1, 0, true},
                                                   {"F2", 2, 2, 0, true}}));
    ASSERT_EQ(vector.size(), 1U);
    EXPECT_EQ(vector[0].components, (Order{1, 2, 0}));

    auto const tensor = layoutsOf(blockOf("STRESS", {{"SXX", 4, 1, 1, true},
                                                     {"SYX", 4, 2, 1, true},
                                                     {"SXZ", 4, 1, 3, true},
                                                     {"SYY", 4, 2, 2, true},
                                                     {"SZY", 4, 3, 2, true},
                                                     {"SZZ", 4, 3, 3, true}}));
    ASSERT_EQ(tensor.size(), 1U);
    EXPECT_EQ(tensor[0].components, (Order{0, 3, 5, 1, 4, 2}));
}

TEST(ResultLayout, SixScalarsAreNoTensorAndThreeAreNoVector)
{
    std::vector<Component> six = tensorComponents;
    for (Component& component : six)
        component.entity = 1;
    EXPECT_EQ(layoutsOf(blockOf("CONTACT", six)).size(), 6U);
    EXPECT_EQ(layoutsOf(blockOf("THREE", {six[0], six[1], six[2]})).size(), 3U);
}

TEST(ResultLayout, ContactIsNoTensorThoughItHasRowsAndColumns)
{
    auto const layouts = layoutsOf(blockOf("CONTACT", {{"COPEN", 4, 1, 1, true},
                                                       {"CSLIP1", 4, 2, 2, true},
                                                       {"CSLIP2", 4, 3, 3, true},
                                                       {"CPRESS", 4, 1, 2, true},
                                                       {"CSHEAR1", 4, 2, 3, true},
                                                       {"CSHEAR2", 4, 3, 1, true}}));
    ASSERT_EQ(layouts.size(), 6U);
    EXPECT_EQ(layouts[0].name, "CONTACT COPEN");
    EXPECT_EQ(layouts[3].name, "CONTACT CPRESS");
    EXPECT_EQ(layouts[5].name, "CONTACT CSHEAR2");
    EXPECT_EQ(layouts[5].components, (Order{5}));
}

TEST(ResultLayout, NamesOfATensorMayEndAlikeAndCountTheAxes)
{
    std::vector<Component> components = tensorComponents;
    for (Component& component : components)
        component.name = "d" + component.name + "dRx";
    EXPECT_EQ(layoutsOf(blockOf("SEN", components)).size(), 1U);
    char const* const counted[] = {"S11", "S22", "S33", "S12", "S23", "S13"};
    for (std::size_t i = 0; i < components.size(); ++i)
        components[i].name = counted[i];
    EXPECT_EQ(layoutsOf(blockOf("STRESS", components)).size(), 1U);
}

TEST(ResultLayout, AComponentNamedOtherwiseMakesATensorScalars)
{
    for (char const* other : {"PXX", "SXXX", "S", "", "SWW"}) {
        std::vector<Component> components = tensorComponents;
        components[0].name = other;
        EXPECT_EQ(layoutsOf(blockOf("STRESS", components)).size(), 6U) << other;
    }
}

TEST(ResultLayout, NamesDecideWhereRowsAreAllTheSame)
{
    auto const layouts = layoutsOf(blockOf(
        "SEN", {{"dD1dRx", 2, 1, 0, true}, {"dD2dRx", 2, 1, 0, true}, {"dD3dRx", 2, 1, 0, true}}));
    ASSERT_EQ(layouts.size(), 1U);
    EXPECT_EQ(layouts[0].components, (Order{0, 1, 2}));
}

TEST(ResultLayout, RowsDecideWhereNamesOfAVectorDoNotTell)
{
    auto const layouts = layoutsOf(
        blockOf("VEL", {{"W", 2, 3, 0, true}, {"U", 2, 1, 0, true}, {"V", 2, 2, 0, true}}));
    ASSERT_EQ(layouts.size(), 1U);
    EXPECT_EQ(layouts[0].components, (Order{1, 2, 0}));
}

TEST(ResultLayout, ARepeatedPlaceIsNoTensor)
{
    std::vector<Component> twice = tensorComponents;
    twice[5] = {"SYX", 4, 2, 1, true};
    EXPECT_EQ(layoutsOf(blockOf("STRESS", twice)).size(), 6U);
}

TEST(ResultLayout, DisplacementsInThePlaneAreSplit)
{
    auto const layouts =
        layoutsOf(blockOf("DISP", {vectorComponents[0], vectorComponents[1], vectorComponents[3]}));
    ASSERT_EQ(layouts.size(), 2U);
    EXPECT_EQ(layouts[0].name, "DISP D1");
    EXPECT_EQ(layouts[1].name, "DISP D2");
}

TEST(ResultLayout, ANamelessComponentIsCounted)
{
    auto const layouts = layoutsOf(blockOf("SDV", {{"", 1, 0, 0, true}, {"", 1, 0, 0, true}}));
    ASSERT_EQ(layouts.size(), 2U);
    EXPECT_EQ(layouts[1].name, "SDV 2");
}

} // namespace
