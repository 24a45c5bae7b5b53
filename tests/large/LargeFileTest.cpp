#include "large/Figures.h"
#include "large/Numbers.h"
#include "large/Space.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace Large {

namespace {

using namespace Zyl2::Mox2;

constexpr std::uint64_t gibibyte = 1073741824;
constexpr unsigned long rowCount = 5700001;
constexpr unsigned long width = 3;
constexpr std::uint64_t datasetSize = rowCount * width * 4;

/// A block is full at 200 MiB, which the fourth dataset exceeds: it has four of them.
constexpr std::uint64_t blockSize = 4 * datasetSize;

struct FileSize
{
    std::uint64_t bytes;

    /// How many datasets make the file larger than that when their values do not compress.
    unsigned int datasets() const { return static_cast<unsigned int>(bytes / datasetSize + 1); }
};

void fill(Array2d<unsigned int>& values, Numbers const& numbers)
{
    std::uint64_t place = 0;
    for (unsigned long row = 0; row < rowCount; ++row)
        for (unsigned long column = 0; column < width; ++column)
            values(row, column) = numbers.at(place++);
}

void writeSteps(std::string const& path, unsigned int count)
{
    Model model;
    model.saveTo(path);
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    Array2d<unsigned int> values(rowCount, width);
    for (unsigned int step = 0; step < count; ++step) {
        fill(values, Numbers(step));
        model.addArrayProperty(DatasetType::Displacement, values, shape,
                               Step(std::to_string(step)));
    }
    model.close();
}

/// \return whether the dataset has exactly the given numbers, in their order
bool holds(MoxRead::Dataset const& dataset, Numbers const& numbers)
{
    std::uint64_t place = 0;
    return dataset.words.size() == rowCount * width &&
           std::all_of(dataset.words.begin(), dataset.words.end(),
                       [&](std::uint32_t word) { return word == numbers.at(place++); });
}

void expectSteps(MoxRead::Model& model, unsigned int count)
{
    unsigned int step = 0;
    model.readAll([&](MoxRead::Model::Variables const& variables, MoxRead::Dataset const& dataset) {
        ASSERT_EQ(variables.size(), 1U);
        ASSERT_EQ(variables[0]->stepName(), std::to_string(step));
        EXPECT_EQ(variables[0]->dataPosition, step * datasetSize);
        EXPECT_TRUE(holds(dataset, Numbers(step))) << "step " << step;
        ++step;
    });
    EXPECT_EQ(step, count);
}

class LargeFileTest : public testing::TestWithParam<FileSize>
{
protected:
    Support::TemporaryFolder folder;
};

} // namespace

TEST_P(LargeFileTest, HoldsEveryValueAndNeedsTheMemoryOfAFewBlocks)
{
    std::uint64_t const limit = GetParam().bytes;
    unsigned int const count = GetParam().datasets();
    ASSERT_GT(availableSpace(), limit + gibibyte) << "set TMPDIR to a folder with more room";
    std::string const path = folder.File("large.mox");
    Figures figures("file above " + std::to_string(limit / gibibyte) + " GiB");

    writeSteps(path, count);
    std::uint64_t const size = std::filesystem::file_size(path);
    figures.lap("written", size);
    EXPECT_GT(size, limit);
    EXPECT_LT(peakMemory(), 5 * blockSize);

    MoxRead::Summary const summary = MoxRead::verify(path);
    figures.lap("verified", size);
    EXPECT_EQ(summary.bytes, size);
    EXPECT_EQ(summary.datasets, count);

    MoxRead::Model model(path);
    expectSteps(model, count);
    figures.lap("compared", model.heavyLength());
    EXPECT_EQ(model.heavyLength(), count * datasetSize);
    EXPECT_EQ(model.unusedHeavyLength(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Sizes, LargeFileTest,
                         testing::Values(FileSize{4 * gibibyte}, FileSize{8 * gibibyte}),
                         [](auto const& size) {
                             return "Above" + std::to_string(size.param.bytes / gibibyte) + "GiB";
                         });

} // namespace Large
