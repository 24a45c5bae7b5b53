#include "fault/Faults.h"
#include "fault/Host.h"
#include "fault/Scenarios.h"

#include "container/TemporaryFile.h"
#include "moxread/FormatError.h"
#include "moxread/Verify.h"
#include "support/Environment.h"
#include "support/EnvironmentVariable.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include <Zyl2/Log/Logging.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace Fault {

namespace {

using Temper = Host::Temper;

/// Runs one scenario again and again, each time with another fault.
class Sweep
{
public:
    Sweep(Scenario const& scenario, Temper temper)
        : scenario_(scenario), temper_(temper),
          setting_(scenario.blockSize.c_str()), paths_{folder_.File("first.mox"),
                                                       folder_.File("second.mox")}
    {
        // The library makes some objects at their first use and keeps them. Without this run, the
        // next one would take them for lost memory.
        Host(temper_, paths_).run(scenario_.program);
        whole_ = runWithoutFault();
        for (std::size_t file = 0; file < paths_.size(); ++file)
            expected_[file] = contentOf(file);
    }

    /// Slots in the first file.
    std::size_t slotCount() const { return MoxRead::Container(paths_[0]).slots().size(); }

    /// Fails at the first operation of the place, at the second one, and so on.
    /// \return how many operations there were
    std::size_t failAtEach(Place place, Repeat repeat)
    {
        std::size_t const step = strideOf(place);
        std::size_t ordinal = 0;
        while (failAt(place, ordinal, repeat) && !testing::Test::HasFailure())
            ordinal += step;
        return ordinal;
    }

private:
    /// Builds without sanitizers go to each operation.
    static std::size_t strideOf(Place place)
    {
        if (place == Place::ThreadStart)
            return 1;
        return Support::stride(place == Place::Allocation ? 11 : 3);
    }

    Outcome run()
    {
        for (std::string const& path : paths_)
            std::filesystem::remove(path);
        long const before = liveAllocations();
        Outcome const outcome = Host(temper_, paths_).run(scenario_.program);
        EXPECT_EQ(liveAllocations(), before) << "memory is lost";
        return outcome;
    }

    Outcome runWithoutFault()
    {
        Outcome const outcome = run();
        EXPECT_EQ(outcome.endings, 0U);
        EXPECT_TRUE(outcome.isWritten[0]);
        expectSound(outcome);
        return outcome;
    }

    /// \return whether the scenario got as far as the fault
    bool failAt(Place place, std::size_t ordinal, Repeat repeat)
    {
        SCOPED_TRACE("operation " + std::to_string(ordinal));
        Outcome outcome;
        bool hasStruck = false;
        {
            Injection const injection(place, ordinal, repeat);
            outcome = run();
            hasStruck = injection.hasStruck();
        }
        expectSound(outcome);
        expectDocumented(outcome, place);
        if (outcome.endings == 0)
            expectAsWithoutFault(outcome);
        return hasStruck;
    }

    /// Expects that files that `close` reported as written are whole, and that the reader takes no
    /// other file for a whole one unless nothing is missing in it.
    void expectSound(Outcome const& outcome) const
    {
        EXPECT_FALSE(outcome.secondCloseFailed);
        for (std::size_t file = 0; file < paths_.size(); ++file) {
            bool const hasFile = outcome.isOpened[file] || std::filesystem::exists(paths_[file]);
            if (!hasFile)
                continue;
            std::string const verdict = verdictOn(paths_[file]);
            if (outcome.isWritten[file] || isWhole(file))
                EXPECT_EQ(verdict, "ok");
            else
                EXPECT_NE(verdict, "ok");
        }
    }

    /// Whether the file has all bytes. It may have them although `close` failed, if that was when
    /// nothing was left to write.
    bool isWhole(std::size_t file) const
    {
        try {
            return contentOf(file) == expected_[file];
        } catch (MoxRead::FormatError const&) {
            return false;
        }
    }

    static std::string verdictOn(std::string const& path)
    {
        try {
            MoxRead::verify(path);
        } catch (MoxRead::FormatError const& error) {
            return error.what();
        }
        return "ok";
    }

    static void expectDocumented(Outcome const& outcome, Place place)
    {
        EXPECT_EQ(outcome.endings & Undocumented, 0U);
        EXPECT_EQ(outcome.closeEndings & ~(NoMemory | MemoryAllocation | FileNotWritten), 0U);
        if (outcome.endings == 0)
            return;
        EXPECT_NE(place, Place::ThreadStart) << "fewer threads have to do";
        if (place == Place::Allocation)
            EXPECT_TRUE(outcome.first == NoMemory || outcome.first == MemoryAllocation)
                << outcome.first;
        else
            EXPECT_EQ(outcome.first, outcome.firstWasOpening ? FileNotOpened : FileNotWritten);
    }

    /// Expects the same files as without a fault, for runs in which no call has failed.
    void expectAsWithoutFault(Outcome const& outcome) const
    {
        EXPECT_EQ(outcome.isWritten, whole_.isWritten);
        for (std::size_t file = 0; file < paths_.size(); ++file)
            EXPECT_TRUE(contentOf(file) == expected_[file]) << "bytes are lost";
    }

    std::string contentOf(std::size_t file) const
    {
        std::string const& path = paths_[file];
        return std::filesystem::exists(path) ? Support::withoutWritingRecord(path) : std::string();
    }

    Scenario scenario_;
    Temper temper_;
    Support::DefaultBlockSizeSetting setting_;
    Support::TemporaryFolder folder_;
    Host::Paths paths_;
    Outcome whole_;
    Host::Paths expected_;
};

/// Counts what is told of threads. It keeps nothing, or it would be taken for lost memory.
struct LogOfThreads : Zyl2::Log::LogSystem
{
    using LogSystem::operator+=;

    void operator+=(std::ostream const& text) override
    {
        std::string const told = dynamic_cast<Zyl2::Log::Record<char> const&>(text).str();
        std::string const reason =
            " of 2 can't be started: Resource temporarily unavailable; going on with ";
        withoutAny += told == "Thread 1" + reason + "0" ? 1 : 0;
        withOne += told == "Thread 2" + reason + "1" ? 1 : 0;
    }

    int withoutAny = 0;
    int withOne = 0;
};

std::string nameOf(testing::TestParamInfo<std::tuple<Scenario, Temper, Repeat>> const& info)
{
    auto const& [scenario, temper, repeat] = info.param;
    return scenario.name + (temper == Temper::Careful ? "Careful" : "Stubborn") +
           (repeat == Repeat::Once ? "Once" : "FromThenOn");
}

} // namespace

class InjectedFaultTest : public testing::TestWithParam<std::tuple<Scenario, Temper, Repeat>>
{
protected:
    static std::size_t failAtEach(Place place)
    {
        auto const& [scenario, temper, repeat] = GetParam();
        return Sweep(scenario, temper).failAtEach(place, repeat);
    }
};

TEST_P(InjectedFaultTest, NoAllocationThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::Allocation), 100U);
}

TEST_P(InjectedFaultTest, NoStreamCallThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::StreamCall), 10U);
}

TEST_P(InjectedFaultTest, NoDeviceOperationThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::Device), 5U);
}

INSTANTIATE_TEST_SUITE_P(AllCalls, InjectedFaultTest,
                         testing::Combine(testing::ValuesIn(smallScenarios()),
                                          testing::Values(Temper::Careful, Temper::Stubborn),
                                          testing::Values(Repeat::Once, Repeat::FromThenOn)),
                         nameOf);

#ifdef SANITIZED
constexpr std::array<Repeat, 1> repeatsWithThreads{Repeat::Once};
#else
constexpr std::array<Repeat, 2> repeatsWithThreads{Repeat::Once, Repeat::FromThenOn};
#endif

class ThreadsFaultTest : public testing::TestWithParam<std::tuple<Scenario, Repeat>>
{
protected:
    static std::size_t failAtEach(Place place)
    {
        auto const& [scenario, repeat] = GetParam();
        return Sweep(scenario, Temper::Careful).failAtEach(place, repeat);
    }

    Support::EnvironmentVariable const two{"MOXWRITER_THREADS", "2"};
};

TEST_P(ThreadsFaultTest, NoAllocationThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::Allocation), 100U);
}

TEST_P(ThreadsFaultTest, NoStreamCallThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::StreamCall), 10U);
}

TEST_P(ThreadsFaultTest, NoDeviceOperationThatFailsGoesUnnoticed)
{
    EXPECT_GT(failAtEach(Place::Device), 5U);
}

TEST_P(ThreadsFaultTest, WithoutAThreadThatCantBeStartedTheFileIsTheSame)
{
    // Only some have so many blocks that a thread is needed.
    failAtEach(Place::ThreadStart);
}

INSTANTIATE_TEST_SUITE_P(AllCalls, ThreadsFaultTest,
                         testing::Combine(testing::ValuesIn(smallScenarios()),
                                          testing::ValuesIn(repeatsWithThreads)),
                         [](auto const& sweep) {
                             return std::get<0>(sweep.param).name +
                                    (std::get<1>(sweep.param) == Repeat::Once ? "Once"
                                                                              : "FromThenOn");
                         });

TEST(ManyBlocksTest, AThreadThatCantBeStartedIsTold)
{
    Support::EnvironmentVariable const two("MOXWRITER_THREADS", "2");
    Sweep sweep(manyBlocks(), Temper::Careful);
    LogOfThreads log;
    Zyl2::Log::LogSystem* const previous = Zyl2::Log::setActiveLogSystem(&log);
    EXPECT_EQ(sweep.failAtEach(Place::ThreadStart, Repeat::FromThenOn), 2U);
    Zyl2::Log::setActiveLogSystem(previous);
    EXPECT_EQ(log.withoutAny, 1);
    EXPECT_EQ(log.withOne, 1);
}

TEST(ManyBlocksTest, WhereNoThreadCanBeStartedAtTheEndTheFileIsTheSame)
{
    using namespace Zyl2::Mox2;
    Support::TemporaryFolder const folder;
    auto const written = [&](std::string const& path, Place place) {
        SaverOptions options;
        options.threads = 2;
        Model model;
        model.saveTo(path, options);
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "shape");
        // Far from a block that is full, and yet worth a thread.
        model.addArrayProperty("array", DatasetType::Result10, std::vector<float>(20000, 0.5F),
                               shape, Step());
        Injection const injection(place, 0, Repeat::FromThenOn);
        AtWork const atWork;
        model.close();
        EXPECT_EQ(injection.hasStruck(), place == Place::ThreadStart);
        return Support::withoutWritingRecord(path);
    };
    EXPECT_TRUE(written(folder.File("a.mox"), Place::ThreadStart) ==
                written(folder.File("b.mox"), Place::None));
}

TEST(ManyBlocksTest, TheScenariosNeedIndexBlocks)
{
    constexpr std::size_t withOne = 220;
    constexpr std::size_t withTwo = 420;
    EXPECT_EQ(Sweep(smallScenarios()[3], Temper::Careful).slotCount(), withOne);
    EXPECT_EQ(Sweep(manyBlocks(), Temper::Careful).slotCount(), withTwo);
}

#ifndef SANITIZED
TEST(ManyBlocksTest, NoStreamCallThatFailsGoesUnnoticed)
{
    Sweep sweep(manyBlocks(), Temper::Careful);
    EXPECT_GT(sweep.failAtEach(Place::StreamCall, Repeat::Once), 400U);
}
#endif

} // namespace Fault
