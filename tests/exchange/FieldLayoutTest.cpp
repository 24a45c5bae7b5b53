#include "MemorySource.h"

#include <exchange/FieldLayout.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace Exchange;
using Names = std::vector<std::string>;
using Components = std::vector<std::size_t>;

Field fieldOfWidth(std::size_t components)
{
    return fieldOf("F", Location::Nodes, components, std::vector<float>(components));
}

Names namesOf(std::vector<FieldLayout> const& layouts)
{
    Names names;
    for (FieldLayout const& layout : layouts)
        names.push_back(layout.name);
    return names;
}

TEST(FieldLayout, ScalarsVectorsAndSymmetricTensorsStayWhole)
{
    for (std::size_t const width : {1U, 3U, 6U}) {
        std::vector<FieldLayout> const layouts = layoutsOf(fieldOfWidth(width));
        ASSERT_EQ(namesOf(layouts), (Names{"F"}));
        EXPECT_EQ(layouts[0].components.size(), width);
        EXPECT_EQ(layouts[0].components.back(), width - 1);
    }
}

TEST(FieldLayout, OtherNumbersOfComponentsAreSplit)
{
    std::vector<FieldLayout> const layouts = layoutsOf(fieldOfWidth(2));
    EXPECT_EQ(namesOf(layouts), (Names{"F 1", "F 2"}));
    EXPECT_EQ(layouts[1].components, (Components{1}));
}

TEST(FieldLayout, SplitComponentsHaveTheNamesThatTheSourceGives)
{
    Field field = fieldOfWidth(4);
    field.componentNames = {"Real", "", "Phase"};
    EXPECT_EQ(namesOf(layoutsOf(field)), (Names{"F Real", "F 2", "F Phase", "F 4"}));
}

TEST(FieldLayout, ASymmetricMatrixBecomesATensor)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    Field const field = fieldOf("F", Location::Elements, 9,
                                std::vector<double>{1, 2, 3, 2, 4, nan, 3, nan, 5, //
                                                    9, 8, 7, 8, 6, 5, 7, 5, 4});
    std::vector<FieldLayout> const layouts = layoutsOf(field);
    ASSERT_EQ(namesOf(layouts), (Names{"F"}));
    EXPECT_EQ(layouts[0].components, (Components{0, 4, 8, 1, 5, 6}));
}

TEST(FieldLayout, AMatrixThatIsNotSymmetricInEveryRowIsSplit)
{
    Field const field =
        fieldOf("F", Location::Elements, 9,
                std::vector<std::int64_t>{1, 2, 3, 2, 4, 5, 3, 5, 6, 1, 2, 3, 2, 4, 5, 3, 4, 6});
    EXPECT_EQ(namesOf(layoutsOf(field)),
              (Names{"F XX", "F XY", "F XZ", "F YX", "F YY", "F YZ", "F ZX", "F ZY", "F ZZ"}));
}

} // namespace
