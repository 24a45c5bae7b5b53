#include "threads/ThreadCount.h"

#include "container/TemporaryFile.h"
#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Threads {

namespace {

using MoxRead::Inflater;
using MoxRead::ReadOptions;

constexpr unsigned int arrayCount = 40;

ReadOptions readingWith(unsigned int threads)
{
    ReadOptions options;
    options.threads = threads;
    return options;
}

/// What was visited, and the sentence that ended it; the same whatever the number of threads is.
struct Reading
{
    std::vector<std::string> steps;
    std::vector<std::vector<std::uint32_t>> values;
    std::string failure;

    bool operator==(Reading const& other) const
    {
        return steps == other.steps && values == other.values && failure == other.failure;
    }
};

class ReaderThreadsTest : public testing::Test
{
protected:
    /// Arrays of different lengths, several in most blocks.
    ReaderThreadsTest()
    {
        // With the first thread of a process, sanitizers start one of their own.
        std::thread([] {}).join();
        using namespace Zyl2::Mox2;
        SaverOptions options;
        options.blockSize = 8192;
        Model model;
        model.saveTo(path, options);
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "shape");
        for (unsigned int number = 0; number < arrayCount; ++number) {
            Array1d<float> values(500 + 100 * (number % 7), 0.0F);
            for (std::size_t row = 0; row < values.size(); ++row)
                values[row] = static_cast<float>((row * number) % 1000) * 0.37F;
            model.addArrayProperty("array", DatasetType::Result10, values, shape,
                                   Step(std::to_string(number)));
        }
        model.close();
    }

    Reading readAll(ReadOptions const& options) const
    {
        Reading reading;
        try {
            MoxRead::Model model(path, options);
            model.readAll(
                [&](MoxRead::Model::Variables const& variables, MoxRead::Dataset const& dataset) {
                    reading.steps.push_back(variables.front()->stepName());
                    reading.values.push_back(dataset.words);
                });
        } catch (MoxRead::FormatError const& error) {
            reading.failure = error.what();
        }
        return reading;
    }

    std::string verdict(ReadOptions const& options) const
    {
        try {
            return std::to_string(MoxRead::verify(path, {}, options).datasets);
        } catch (MoxRead::FormatError const& error) {
            return error.what();
        }
    }

    /// In the middle of one of the blocks with values.
    void damage(std::size_t block) const
    {
        MoxRead::Container const container(path);
        MoxRead::Slot const slot = container.slotsOf("Heavy Data").at(block);
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(slot.position + slot.size / 2));
        file.write("damaged", 7);
        ASSERT_TRUE(file.flush());
    }

    Support::TemporaryFolder folder;
    std::string path = folder.File("a.mox");
};

} // namespace

TEST_F(ReaderThreadsTest, LeaveNoTraceInWhatIsRead)
{
    Reading const expected = readAll(readingWith(0));
    ASSERT_EQ(expected.steps.size(), arrayCount);
    ASSERT_EQ(expected.failure, "");
    ASSERT_GT(MoxRead::Container(path).slotsOf("Heavy Data").size(), 10U);
    for (unsigned int const threads : {1U, 2U, 5U, 100U}) {
        for (Inflater const inflater : MoxRead::builtInflaters()) {
            ReadOptions options = readingWith(threads);
            options.inflater = inflater;
            EXPECT_TRUE(readAll(options) == expected) << threads << " " << nameOf(inflater);
        }
        EXPECT_EQ(verdict(readingWith(threads)), std::to_string(arrayCount));
    }
}

TEST_F(ReaderThreadsTest, OfADamagedFileTellTheFirstBlockThatIsAfterAllBeforeWereRead)
{
    damage(3);
    damage(6);
    damage(7);
    Reading const expected = readAll(readingWith(0));
    ASSERT_GT(expected.steps.size(), 0U);
    ASSERT_LT(expected.steps.size(), arrayCount);
    ASSERT_NE(expected.failure, "");
    std::string const expectedVerdict = verdict(readingWith(0));
    for (unsigned int const threads : {1U, 2U, 5U}) {
        EXPECT_TRUE(readAll(readingWith(threads)) == expected) << threads;
        EXPECT_EQ(verdict(readingWith(threads)), expectedVerdict);
    }
}

TEST_F(ReaderThreadsTest, EndWithTheReading)
{
    std::ptrdiff_t const before = threadCount();
    MoxRead::Model model(path, readingWith(3));
    EXPECT_EQ(threadCount(), before);
    unsigned int visits = 0;
    auto const giveUp = [&](MoxRead::Model::Variables const&, MoxRead::Dataset const&) {
        EXPECT_EQ(threadCount(), before + 3);
        if (++visits == 5)
            throw std::runtime_error("enough");
    };
    EXPECT_THROW(model.readAll(giveUp), std::runtime_error);
    // The system lists a thread a moment longer than it is waited for.
    for (int attempt = 0; attempt < 1000 && threadCount() > before; ++attempt)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(threadCount(), before);
}

TEST_F(ReaderThreadsTest, WithoutThemNoneIsStarted)
{
    std::ptrdiff_t const before = threadCount();
    MoxRead::Model model(path);
    model.readAll([&](MoxRead::Model::Variables const&, MoxRead::Dataset const&) {
        EXPECT_EQ(threadCount(), before);
    });
    MoxRead::verify(path, [&](std::uint64_t, std::uint64_t) { EXPECT_EQ(threadCount(), before); });
}

TEST_F(ReaderThreadsTest, WhatWasExpectedMayBeReadOtherwise)
{
    Reading const expected = readAll(readingWith(0));
    MoxRead::Model model(path, readingWith(2));
    MoxRead::Model::Variables variables;
    for (MoxRead::Variable const& variable : model.nodes().back().geometry()->variables)
        variables.push_back(&variable);
    ASSERT_EQ(variables.size(), arrayCount);
    model.expect(variables);
    // Some in between, some left out, some twice.
    for (std::size_t const at : {0U, 30U, 1U, 2U, 39U, 12U, 13U, 13U, 5U, 14U, 38U, 39U})
        EXPECT_EQ(model.read(*variables[at]).words, expected.values[at]) << at;
    model.expect({variables.rbegin(), variables.rend()});
    for (std::size_t at = arrayCount; at-- > 0;)
        EXPECT_EQ(model.read(*variables[at]).words, expected.values[at]) << at;
}

} // namespace Threads
