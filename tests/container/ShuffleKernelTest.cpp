#include "Zyl2/Util/Shuffle.h"
#include "Zyl2/Util/ShuffleKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zyl2Util;

constexpr std::size_t Guard = 96;
constexpr unsigned char GuardByte = 0xA5;

struct Kernel
{
    char const* name;
    ShuffleFunction* shuffle;
};

/// Those whose instructions this processor has.
std::vector<Kernel> Kernels()
{
    std::vector<Kernel> kernels{{"Dispatched", ShuffleColumns}, {"Portable", ShufflePortable}};
#if defined(__x86_64__)
    kernels.push_back({"Sse2", ShuffleSse2});
    kernels.push_back({"Sse2Streamed", ShuffleSse2Streamed});
    if (CpuHasAvx2()) {
        kernels.push_back({"Avx2", ShuffleAvx2});
        kernels.push_back({"Avx2Streamed", ShuffleAvx2Streamed});
    }
#endif
    return kernels;
}

// Bytes whose pattern repeats itself only after far more bytes than a tile has.
std::vector<unsigned char> Values(std::size_t size)
{
    std::size_t const period = 251 * 256;
    std::vector<unsigned char> values(size);
    for (std::size_t at = 0; at < std::min(size, period); ++at)
        values[at] = static_cast<unsigned char>(at % 251 + at / 251 * 7);
    // memcpy: what is done byte by byte takes most of the time without optimisation.
    for (std::size_t at = period; at < size; at += period)
        std::memcpy(values.data() + at, values.data(), std::min(period, size - at));
    return values;
}

// Each byte by itself, from the definition of the planes.
std::vector<unsigned char> Expected(std::vector<unsigned char> const& values, std::size_t rows,
                                    std::size_t width)
{
    std::vector<unsigned char> planes(values.size());
    std::size_t at = 0;
    for (std::size_t column = 0; column < width; ++column)
        for (std::size_t byte = 0; byte < 4; ++byte)
            for (std::size_t row = 0; row < rows; ++row)
                planes[at++] = values[(row * width + column) * 4 + byte];
    return planes;
}

// Values and what is expected of them, once for all kernels.
struct Case
{
    Case(std::size_t rows, std::size_t width)
        : values(Values(rows * width * 4)), expected(Expected(values, rows, width))
    {}

    static Case const& Of(std::size_t rows, std::size_t width)
    {
        static std::map<std::pair<std::size_t, std::size_t>, Case> cases;
        return cases.try_emplace({rows, width}, rows, width).first->second;
    }

    std::vector<unsigned char> const values;
    std::vector<unsigned char> const expected;
};

// An array of its own size: a sanitizer notices what is read beyond its end. Not initialised.
struct Place
{
    Place(std::size_t size, std::size_t offset)
        : bytes(new unsigned char[size + offset]), first(bytes.get() + offset)
    {}

    std::unique_ptr<unsigned char[]> bytes;
    unsigned char* first;
};

/// Gives the values of a table as if they had to be converted.
class CopyingConverter final : public ValueConverter
{
public:
    CopyingConverter(unsigned char const* values, std::size_t width)
        : values_(values), width_(width)
    {}

    void Convert(TablePart const& part, unsigned char* to) override
    {
        for (std::size_t row = 0; row < part.rows; ++row, to += part.columns * 4)
            std::memcpy(to, values_ + ((part.firstRow + row) * width_ + part.firstColumn) * 4,
                        part.columns * 4);
    }

private:
    unsigned char const* const values_;
    std::size_t const width_;
};

class ShuffleKernel : public testing::TestWithParam<Kernel>
{
protected:
    // The first bytes of source and destination lie behind 16-byte boundaries by the offsets.
    static void Check(std::size_t rows, std::size_t width, std::size_t sourceOffset,
                      std::size_t destinationOffset)
    {
        SCOPED_TRACE(std::to_string(rows) + " rows, width " + std::to_string(width) +
                     ", source offset " + std::to_string(sourceOffset) + ", destination offset " +
                     std::to_string(destinationOffset));
        std::vector<unsigned char> const& values = Case::Of(rows, width).values;
        Place const source(values.size(), sourceOffset);
        std::copy(values.begin(), values.end(), source.first);
        CheckInput(source.first, values, rows, width, destinationOffset);
        CopyingConverter converter(source.first, width);
        CheckInput(converter, values, rows, width, destinationOffset);
        EXPECT_TRUE(values.empty() || std::memcmp(source.first, values.data(), values.size()) == 0);
    }

private:
    static void CheckInput(ShuffleInput const& input, std::vector<unsigned char> const& values,
                           std::size_t rows, std::size_t width, std::size_t destinationOffset)
    {
        SCOPED_TRACE(input.converter == nullptr ? "as they are" : "converted");
        Place const destination(values.size() + 2 * Guard, destinationOffset);
        std::memset(destination.first, GuardByte, values.size() + 2 * Guard);

        GetParam().shuffle(input, rows, width, destination.first + Guard);

        std::vector<unsigned char> const guard(Guard, GuardByte);
        std::vector<unsigned char> const& expected = Case::Of(rows, width).expected;
        unsigned char const* const planes = destination.first + Guard;
        EXPECT_EQ(std::memcmp(destination.first, guard.data(), Guard), 0);
        EXPECT_EQ(std::memcmp(planes + expected.size(), guard.data(), Guard), 0);
        EXPECT_TRUE(expected.empty() || std::memcmp(planes, expected.data(), expected.size()) == 0);
    }
};

TEST_P(ShuffleKernel, SplitsRowsOfAnyNumberAndWidth)
{
    std::vector<std::size_t> widths{0, 31, 32, 33, 47, 48, 49, 255};
    for (std::size_t width = 1; width <= 16; ++width)
        widths.push_back(width);
    for (std::size_t const width : widths)
        for (std::size_t const rows : {0U, 1U, 2U, 15U, 16U, 17U, 31U, 32U, 33U, 63U, 64U, 65U,
                                       100U, 511U, 512U, 513U, 1000U})
            Check(rows, width, 0, 0);
}

TEST_P(ShuffleKernel, SplitsMoreRowsThanATileHas)
{
    for (std::size_t const width : {1U, 2U, 3U, 6U, 8U, 13U, 31U, 255U})
        Check(4097, width, 0, 0);
}

TEST_P(ShuffleKernel, TakesArraysAtAnyAddress)
{
    for (std::size_t const width : {1U, 3U, 6U, 8U, 33U})
        for (std::size_t offset = 0; offset < 16; ++offset) {
            Check(100, width, offset, 0);
            Check(100, width, 0, offset);
            Check(1501, width, offset, 15 - offset);
        }
}

TEST_P(ShuffleKernel, TakesRowsWiderThanATile)
{
    for (std::size_t const rows : {3U, 16U, 40U})
        Check(rows, 5003, 0, 0);
}

TEST(ShuffleColumns, TakesArraysLargerThanTheCaches)
{
    std::size_t const rows = 3'000'001;
    std::size_t const width = 3;
    std::vector<unsigned char> const values = Values(rows * width * 4);
    std::vector<unsigned char> planes(values.size());
    std::vector<unsigned char> expected(values.size());
    ShuffleColumns(values.data(), rows, width, planes.data());
    ShufflePortable(values.data(), rows, width, expected.data());
    EXPECT_EQ(std::memcmp(planes.data(), expected.data(), expected.size()), 0);
}

std::string NameOf(testing::TestParamInfo<Kernel> const& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Every, ShuffleKernel, testing::ValuesIn(Kernels()), NameOf);

} // namespace
