#include "fault/Child.h"
#include "fault/Faults.h"
#include "fault/Scenarios.h"

#include "container/TemporaryFile.h"
#include "mox/commands/VerifyCommand.h"
#include "support/Environment.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace Fault {

namespace {

using Mox::verifyFile;

using namespace Zyl2::Mox2;
using Microseconds = std::chrono::microseconds;

constexpr std::uint32_t Runs = Support::isSanitized ? 30 : 300;

/// A small model whose size and blocks depend on the seed: none, one or two index blocks.
class SeededModel
{
public:
    explicit SeededModel(std::uint32_t seed) : random_(seed)
    {
        blockSize_ = std::to_string(below(400));
        datasets_ = below(10) == 0 ? 230 : below(40);
        int const threads = static_cast<int>(below(3));
        // Where the environment asks for threads, all models have so many.
        if (std::getenv("MOXWRITER_THREADS") == nullptr)
            options_.threads = threads;
    }

    void write(std::string const& path)
    {
        Support::DefaultBlockSizeSetting const setting(blockSize_.c_str());
        Model model;
        model.saveTo(path, options_);
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "shape");
        for (unsigned int dataset = 0; dataset < datasets_; ++dataset)
            model.addArrayProperty("dataset " + std::to_string(dataset), DatasetType::Result10,
                                   values(), shape, Step("step"));
        model.close();
    }

private:
    unsigned int below(unsigned int end) { return static_cast<unsigned int>(random_() % end); }

    Array1d<unsigned int> values()
    {
        std::vector<unsigned int> values(1 + below(100));
        for (unsigned int& value : values)
            value = static_cast<unsigned int>(random_());
        return Array1d<unsigned int>(values);
    }

    std::mt19937 random_;
    std::string blockSize_;
    unsigned int datasets_ = 0;
    SaverOptions options_;
};

struct Verdict
{
    int status = 0;
    std::string out;
    std::string err;
};

Verdict verdictOn(std::string const& path)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = verifyFile(path, out, err);
    return {status, out.str(), err.str()};
}

Verdict verdictOfCommandOn(std::string const& path)
{
    std::string const command =
        std::string(MOX_COMMAND) + " verify " + path + " >" + path + ".out 2>" + path + ".err";
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Support::ReadFile(path + ".out"),
            Support::ReadFile(path + ".err")};
}

void expectIncomplete(Verdict const& verdict, std::string const& path)
{
    EXPECT_EQ(verdict.status, 1);
    EXPECT_EQ(verdict.out, "");
    EXPECT_EQ(verdict.err.find(path + ": incomplete: "), 0U) << verdict.err;
    EXPECT_EQ(verdict.err.find('\n'), verdict.err.size() - 1) << verdict.err;
}

/// What became of many runs.
struct Tally
{
    int incomplete = 0;
    int whole = 0;
    int notBegun = 0;
};

std::ostream& operator<<(std::ostream& to, Tally const& tally)
{
    return to << tally.incomplete << " left an incomplete file, " << tally.whole << " a whole one, "
              << tally.notBegun << " none";
}

class KilledRunTest : public testing::Test
{
protected:
    /// \param write writes the model once more, as it would be if nobody had killed the run
    template <typename Write>
    void judge(std::string const& ending, Write const& write)
    {
        ASSERT_TRUE(ending == WasKilled || ending == HasFinished) << ending;
        if (!std::filesystem::exists(path)) {
            EXPECT_EQ(ending, WasKilled);
            ++tally.notBegun;
            return;
        }
        Verdict const verdict = verdictOn(path);
        if (ending == HasFinished || verdict.status == 0)
            judgeWhole(verdict, write);
        else
            judgeIncomplete(verdict);
        std::filesystem::remove(path);
    }

    Support::TemporaryFolder folder;
    std::string path = folder.File("killed.mox");
    Tally tally;

private:
    template <typename Write>
    void judgeWhole(Verdict const& verdict, Write const& write)
    {
        ++tally.whole;
        EXPECT_EQ(verdict.status, 0) << verdict.err;
        std::string const other = folder.File("whole.mox");
        write(other);
        EXPECT_TRUE(Support::withoutWritingRecord(path) == Support::withoutWritingRecord(other));
        std::filesystem::remove(other);
    }

    void judgeIncomplete(Verdict const& verdict)
    {
        constexpr int commandEvery = 20;
        expectIncomplete(verdict, path);
        if (++tally.incomplete % commandEvery == 0)
            expectIncomplete(verdictOfCommandOn(path), path);
    }
};

/// Calls `run` in a process of its own, and kills that process the given time after it has begun.
std::string endingAfter(Microseconds delay, std::function<void()> const& run)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    Child child([&] {
        static_cast<void>(::write(ends[1], "x", 1) == 1);
        run();
        return 0;
    });
    char begun = 0;
    static_cast<void>(::read(ends[0], &begun, 1) == 1);
    ::usleep(static_cast<useconds_t>(delay.count()));
    child.kill();
    ::close(ends[0]);
    ::close(ends[1]);
    return child.wait();
}

Microseconds timeOf(std::function<void()> const& action)
{
    auto const start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - start);
}

} // namespace

TEST_F(KilledRunTest, KilledAtAnyRequestToTheDeviceTheFileIsIncompleteUntilItIsWhole)
{
    constexpr std::size_t step = Runs < 300 ? 7 : 1;
    for (Scenario const& scenario : smallScenarios()) {
        Support::DefaultBlockSizeSetting const setting(scenario.blockSize.c_str());
        // Only the first of several files is looked at: the run ends before it, in it or after it.
        auto const write = [&](std::string const& to) {
            Host(Host::Temper::Careful, {to, folder.File("other.mox")}).run(scenario.program);
        };
        std::string ending = WasKilled;
        for (std::size_t operation = 0; ending == WasKilled; operation += step) {
            SCOPED_TRACE(scenario.name + ", request " + std::to_string(operation));
            ending = Child([&] {
                         Killing const killing(operation);
                         write(path);
                         return 0;
                     }).wait();
            judge(ending, write);
        }
    }
    std::cout << tally << '\n';
    EXPECT_GT(tally.incomplete, 40);
}

TEST_F(KilledRunTest, KilledAtARandomMomentTheFileIsIncompleteUntilItIsWhole)
{
    std::uint32_t const first = printedSeed();
    for (std::uint32_t seed = first; seed != first + Runs; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        auto const write = [seed](std::string const& to) { SeededModel(seed).write(to); };
        std::mt19937 random(~seed);
        Microseconds const whole = timeOf([&] { write(path); });
        std::filesystem::remove(path);
        Microseconds const delay(
            std::uniform_int_distribution<Microseconds::rep>(0, whole.count())(random));
        judge(endingAfter(delay, [&] { write(path); }), write);
    }
    std::cout << tally << '\n';
    EXPECT_GT(tally.incomplete, 0);
}

} // namespace Fault
