#include "fault/Child.h"
#include "fault/RecoverableRun.h"
#include "fault/SharedNumber.h"

#include "container/TemporaryFile.h"
#include "moxread/Verify.h"
#include "support/Wanted.h"

#include <Zyl2/Mox2/InterruptedRun.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>

#include <unistd.h>

namespace Fault {

namespace {

using namespace Zyl2::Mox2;
using Support::wanted;
using Microseconds = std::chrono::microseconds;

constexpr char const* WasAborted = "signal 6";

class KilledRecoveryTest : public testing::Test
{
protected:
    /// Lets a process make the calls of a run, and kills it a moment after so many of them.
    std::string endOfRunKilledAfter(RecoverableRun const& run, std::size_t calls,
                                    Microseconds delay)
    {
        begun.get() = 0;
        done.get() = 0;
        Child child([&] {
            begun.get() = 1;
            writeRecoverably(run, run.callCount());
            begun.get() = 2;
            return 0;
        });
        while (begun.get() == 0 || (begun.get() == 1 && done.get() < calls))
            ::usleep(5);
        ::usleep(static_cast<useconds_t>(delay.count()));
        child.kill();
        return child.wait();
    }

    void writeRecoverably(RecoverableRun const& run, std::size_t count)
    {
        Model model;
        run.makeCalls(model, path, true, count, [this](std::size_t calls) { done.get() = calls; });
        model.close();
    }

    /// What a run left gives what `close` would have written after its last call.
    void expectRecovered(RecoverableRun const& run)
    {
        std::string const recovered = folder.File("recovered.mox");
        std::size_t calls = 0;
        {
            InterruptedRun left(path);
            RunProgress const progress = left.writeTo(recovered);
            EXPECT_EQ(progress.damage, "");
            calls = progress.calls;
        }
        EXPECT_GE(calls, done.get());
        EXPECT_LE(calls, done.get() + 1);
        expectWhole(run, recovered, calls);
    }

    void expectWhole(RecoverableRun const& run, std::string const& file, std::size_t calls)
    {
        EXPECT_NO_THROW(MoxRead::verify(file));
        std::string const expected = folder.File("expected.mox");
        run.writeWhole(expected, calls);
        EXPECT_TRUE(run.contentOf(file) == run.contentOf(expected)) << calls << " calls";
    }

    bool hasFolder() const { return std::filesystem::exists(path + ".recovery"); }

    void clear() const
    {
        std::filesystem::remove_all(path + ".recovery");
        std::filesystem::remove(path);
    }

    Support::TemporaryFolder folder;
    std::string path = folder.File("killed.mox");
    SharedNumber begun;
    SharedNumber done;
};

} // namespace

TEST_F(KilledRecoveryTest, ARunThatIsKilledAtARandomMomentIsRecoveredAsAfterItsLastCall)
{
    std::uint32_t const runs = wanted("MOXWRITER_KILLED_RUNS", 80, 15);
    std::uint32_t const first = printedSeed();
    int recovered = 0;
    int finished = 0;
    for (std::uint32_t seed = first; seed != first + runs && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RecoverableRun const run(seed);
        std::mt19937 random(~seed);
        std::size_t const calls = random() % (run.callCount() + 1);
        Microseconds const delay(random() % 300);
        std::string const ending = endOfRunKilledAfter(run, calls, delay);
        ASSERT_TRUE(ending == WasKilled || ending == HasFinished) << ending;
        if (!InterruptedRun::isBeside(path)) {
            // It was too early, or too late.
            EXPECT_TRUE(done.get() == 0 || done.get() == run.callCount());
            if (done.get() == run.callCount())
                expectWhole(run, path, run.callCount());
            ++finished;
        } else if (InterruptedRun(path).progress().calls == 0 && done.get() == 0) {
            ++finished;
        } else {
            expectRecovered(run);
            ++recovered;
        }
        clear();
    }
    std::cout << recovered << " were recovered, " << finished << " had not begun or had finished\n";
    EXPECT_GT(recovered, 0);
}

TEST_F(KilledRecoveryTest, ARunThatAbortsBetweenTwoCallsIsRecoveredWhole)
{
    std::uint32_t const runs = wanted("MOXWRITER_ABORTED_RUNS", 20, 8);
    std::uint32_t const first = printedSeed();
    for (std::uint32_t seed = first; seed != first + runs && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RecoverableRun const run(seed);
        std::size_t const count = seed % (run.callCount() + 1);
        done.get() = 0;
        EXPECT_EQ(Child([&] {
                      Model model;
                      run.makeCalls(model, path, true, count,
                                    [this](std::size_t calls) { done.get() = calls; });
                      std::abort();
                      return 0;
                  }).wait(),
                  WasAborted);
        expectRecovered(run);
        clear();
    }
}

} // namespace Fault
