#include "mox/print/ComponentNames.h"

#include <gtest/gtest.h>

namespace {

using Mox::componentNames;

using Names = std::vector<std::string>;

TEST(ComponentNames, AreThoseOfVectorsRotationsAndTensors)
{
    for (std::uint32_t const vector : {1U, 13U, 17U, 21U, 26U})
        EXPECT_EQ(componentNames(vector, "U"), (Names{"x", "y", "z"}));
    for (std::uint32_t const rotation : {14U, 18U, 22U, 27U})
        EXPECT_EQ(componentNames(rotation, "U"), (Names{"x", "y", "z", "rx", "ry", "rz"}));
    for (std::uint32_t const tensor : {15U, 19U, 23U, 28U})
        EXPECT_EQ(componentNames(tensor, "S"), (Names{"xx", "yy", "zz", "xy", "yz", "zx"}));
}

TEST(ComponentNames, ASingleOneIsNamedLikeItsDataset)
{
    for (std::uint32_t const scalar : {4U, 5U, 6U, 9U, 12U, 16U, 20U, 24U, 25U})
        EXPECT_EQ(componentNames(scalar, "T"), Names{"T"});
}

} // namespace
