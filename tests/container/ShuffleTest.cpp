#include "Zyl2/Util/Shuffle.h"
#include "Bytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace Zyl2Util;
using Support::Hex;

template <typename T>
std::vector<T> FromBytes(std::string const& bytes)
{
    std::vector<T> values(bytes.size() / sizeof(T));
    if (!values.empty())
        std::memcpy(values.data(), bytes.data(), bytes.size());
    return values;
}

template <typename T>
std::string ToBytes(std::vector<T> const& values)
{
    std::string bytes(values.size() * sizeof(T), '\0');
    if (!values.empty())
        std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

template <typename T>
std::string Shuffled(std::string const& bytes)
{
    std::vector<T> values = FromBytes<T>(bytes);
    ShuffleVectorBytes(values);
    return ToBytes(values);
}

template <typename T>
std::string Shuffled(std::string const& bytes, unsigned char width)
{
    std::vector<T> values = FromBytes<T>(bytes);
    ShuffleMultiVectorBytes(values, width);
    return ToBytes(values);
}

std::string const FourValues = Hex("00 01 02 03 10 11 12 13 20 21 22 23 30 31 32 33");
std::string const FourPlanes = Hex("00 10 20 30 01 11 21 31 02 12 22 32 03 13 23 33");

TEST(Shuffle, FourValuesBecomeFourBytePlanes)
{
    EXPECT_EQ(Shuffled<unsigned int>(FourValues), FourPlanes);
    EXPECT_EQ(Shuffled<float>(FourValues), FourPlanes);
}

TEST(Shuffle, SevenValuesOfWidthThreeAreTwoGroupsPerComponentAndTheSeventhStays)
{
    std::string const values = Hex("00 01 02 03 10 11 12 13 20 21 22 23 30 31 32 33 "
                                   "40 41 42 43 50 51 52 53 60 61 62 63");
    std::string const planes = Hex("00 30 01 31 02 32 03 33 " // values 0 and 3
                                   "10 40 11 41 12 42 13 43 " // values 1 and 4
                                   "20 50 21 51 22 52 23 53 " // values 2 and 5
                                   "60 61 62 63");
    EXPECT_EQ(Shuffled<unsigned int>(values, 3), planes);
    EXPECT_EQ(Shuffled<float>(values, 3), planes);
}

TEST(Shuffle, WidthZeroChangesNothing)
{
    EXPECT_EQ(Shuffled<unsigned int>(FourValues, 0), FourValues);
}

TEST(Shuffle, WidthOneIsOneRunOfPlanes)
{
    EXPECT_EQ(Shuffled<float>(FourValues, 1), FourPlanes);
}

TEST(Shuffle, AWidthBeyondTheValuesChangesNothing)
{
    EXPECT_EQ(Shuffled<unsigned int>(FourValues, 5), FourValues);
    EXPECT_EQ(Shuffled<unsigned int>(FourValues, 255), FourValues);
}

TEST(Shuffle, OneRowOfTwoStaysAsItIs)
{
    EXPECT_EQ(Shuffled<unsigned int>(Hex("00 01 02 03 10 11 12 13"), 2),
              Hex("00 01 02 03 10 11 12 13"));
}

TEST(Shuffle, NoValuesStayNoValues)
{
    EXPECT_EQ(Shuffled<unsigned int>(""), "");
    EXPECT_EQ(Shuffled<float>("", 3), "");
}

TEST(Shuffle, ColumnsAreShuffledIntoAnotherPlaceAndTheSourceStays)
{
    std::string const source = FourValues;
    std::string destination(16, '\xEE');
    ShuffleColumns(source.data(), 2, 2, destination.data());
    EXPECT_EQ(destination, Hex("00 20 01 21 02 22 03 23 10 30 11 31 12 32 13 33"));
    EXPECT_EQ(source, FourValues);
}

} // namespace
