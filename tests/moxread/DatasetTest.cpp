#include "moxread/Dataset.h"

#include <gtest/gtest.h>

using MoxRead::Dataset;
using MoxRead::Variable;

namespace {

Variable variableOf(std::uint32_t elementCode, std::uint32_t count, std::uint8_t width)
{
    Variable variable;
    variable.typeWord = elementCode << 24U;
    variable.valueCount = count;
    variable.width = width;
    return variable;
}

} // namespace

TEST(Dataset, TheFourBytePlanesOfAColumnAreJoined)
{
    const std::uint8_t bytes[] = {0x00, 0x10, 0x20, 0x30, 0x01, 0x11, 0x21, 0x31,
                                  0x02, 0x12, 0x22, 0x32, 0x03, 0x13, 0x23, 0x33};
    Dataset const dataset = Dataset::decode(variableOf(5, 4, 1), bytes);
    EXPECT_EQ(dataset.elementType, MoxRead::ElementType::Uint32);
    EXPECT_EQ(dataset.rows(), 4U);
    EXPECT_EQ(dataset.words,
              (std::vector<std::uint32_t>{0x03020100, 0x13121110, 0x23222120, 0x33323130}));
}

TEST(Dataset, ColumnsAreInterleavedToRows)
{
    const std::uint8_t bytes[] = {0x00, 0x00, 0x00, 0x00, 0x80, 0x80, 0x3F, 0xBF,
                                  0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x40, 0x3F,
                                  0x00, 0x00, 0x00, 0x00, 0x40, 0x80, 0x40, 0x40};
    Dataset const dataset = Dataset::decode(variableOf(1, 6, 3), bytes);
    EXPECT_EQ(dataset.elementType, MoxRead::ElementType::Float);
    EXPECT_EQ(dataset.rows(), 2U);
    EXPECT_EQ(dataset.floats(), (std::vector<float>{1, 2, 3, -1, 0.5F, 4}));
}

TEST(Dataset, NoValuesAreNoRows)
{
    Dataset const dataset = Dataset::decode(variableOf(1, 0, 3), nullptr);
    EXPECT_EQ(dataset.rows(), 0U);
    EXPECT_TRUE(dataset.floats().empty());
}
