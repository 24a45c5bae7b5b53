#include <read/exodus/VariableGroups.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/// Each group as its name and its variables: "V: VX VY VZ".
Names groups(Names const& variables, std::int64_t dimension = 3)
{
    Names texts;
    for (Exodus::VariableGroup const& group : Exodus::groupsOf(variables, dimension)) {
        std::string text = group.name + ":";
        for (std::size_t const component : group.components)
            text += " " + (component < variables.size() ? variables[component] : "0");
        texts.push_back(text);
    }
    return texts;
}

TEST(VariableGroups, ThreeAxesAreAVector)
{
    EXPECT_EQ(groups({"DISPLX", "DISPLY", "DISPLZ"}), Names{"DISPL: DISPLX DISPLY DISPLZ"});
    EXPECT_EQ(groups({"vel_x", "vel_y", "vel_z"}), Names{"vel: vel_x vel_y vel_z"});
    EXPECT_EQ(groups({"velx", "vely", "velz"}), Names{"vel: velx vely velz"});
}

TEST(VariableGroups, OrderOfTheVariablesDoesNotMatter)
{
    EXPECT_EQ(groups({"VZ", "T", "VX", "VY"}), (Names{"V: VX VY VZ", "T: T"}));
}

TEST(VariableGroups, TwoAxesAreAVectorInThePlaneOnly)
{
    EXPECT_EQ(groups({"VX", "VY"}, 2), Names{"V: VX VY 0"});
    EXPECT_EQ(groups({"VX", "VY"}, 3), (Names{"VX: VX", "VY: VY"}));
    EXPECT_EQ(groups({"VX", "VY", "VZ"}, 2), Names{"V: VX VY VZ"});
}

TEST(VariableGroups, IncompleteVectorsStayApart)
{
    EXPECT_EQ(groups({"VX", "VZ"}), (Names{"VX: VX", "VZ: VZ"}));
    EXPECT_EQ(groups({"VX"}, 2), Names{"VX: VX"});
}

TEST(VariableGroups, SpellingMustBeTheSameForAllComponents)
{
    EXPECT_EQ(groups({"V_X", "VY", "V_Z"}), (Names{"V_X: V_X", "VY: VY", "V_Z: V_Z"}));
    EXPECT_EQ(groups({"VX", "Vy", "VZ"}), (Names{"VX: VX", "Vy: Vy", "VZ: VZ"}));
}

TEST(VariableGroups, AxesAloneAreNoVector)
{
    EXPECT_EQ(groups({"X", "Y", "Z"}), (Names{"X: X", "Y: Y", "Z: Z"}));
    EXPECT_EQ(groups({"_X", "_Y", "_Z"}), (Names{"_X: _X", "_Y: _Y", "_Z: _Z"}));
}

TEST(VariableGroups, SixComponentsAreASymmetricTensor)
{
    EXPECT_EQ(groups({"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX"}),
              Names{"S: SXX SYY SZZ SXY SYZ SZX"});
    EXPECT_EQ(groups({"s_xz", "s_xy", "s_xx", "s_yy", "s_yz", "s_zz"}),
              Names{"s: s_xx s_yy s_zz s_xy s_yz s_xz"});
}

TEST(VariableGroups, NineComponentsAreATensorRowByRow)
{
    EXPECT_EQ(groups({"FXX", "FYY", "FZZ", "FXY", "FYZ", "FZX", "FYX", "FZY", "FXZ"}),
              Names{"F: FXX FXY FXZ FYX FYY FYZ FZX FZY FZZ"});
}

TEST(VariableGroups, PartsOfATensorAreNoVector)
{
    EXPECT_EQ(groups({"SXX", "SYY", "SZZ", "SXY"}, 2),
              (Names{"SXX: SXX", "SYY: SYY", "SZZ: SZZ", "SXY: SXY"}));
    EXPECT_EQ(groups({"S_XX", "S_XY", "S_XZ"}), (Names{"S_XX: S_XX", "S_XY: S_XY", "S_XZ: S_XZ"}));
}

TEST(VariableGroups, EachVariableIsInOneGroup)
{
    EXPECT_EQ(groups({"VX", "VY", "VZ", "VX"}), (Names{"V: VX VY VZ", "VX: VX"}));
    EXPECT_EQ(groups({}), Names{});
}

TEST(VariableGroups, ComponentsAreNamedByTheirEndings)
{
    auto const found = Exodus::groupsOf({"VX", "VY", "VZ", "T"}, 3);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].componentNames, (Names{"X", "Y", "Z"}));
    EXPECT_EQ(found[1].componentNames, Names{});
}

} // namespace
