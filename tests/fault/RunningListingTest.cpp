#include "fault/Child.h"
#include "fault/RecoverableRun.h"
#include "fault/SharedNumber.h"

#include "container/TemporaryFile.h"
#include "mox/commands/LsCommand.h"
#include "mox/commands/UnfinishedRun.h"
#include "mox/print/UnfinishedFile.h"
#include "support/Wanted.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace Fault {

namespace {

using nlohmann::json;
using Support::wanted;

constexpr useconds_t BetweenCalls = 300;

json listed(std::string const& path)
{
    Mox::LsArguments arguments;
    arguments.file = path;
    arguments.json = true;
    std::ostringstream out;
    std::ostringstream err;
    int const status = Mox::listFile(arguments, out, err);
    return status == 0 ? json::parse(out.str(), nullptr, false) : json(err.str());
}

/// What a listing tells of a model, but for ranges of values.
std::string toldOf(json listing)
{
    if (!listing.contains("nodes"))
        return listing.dump();
    for (json& node : listing["nodes"]) {
        if (!node.contains("datasets"))
            continue;
        for (json& dataset : node["datasets"]) {
            dataset.erase("range");
            dataset.erase("notNumbers");
        }
    }
    return json{listing["nodes"], listing["steps"]}.dump();
}

class RunningListingTest : public testing::Test
{
protected:
    RunningListingTest() { Mox::lookForUnfinishedFiles(Mox::findUnfinishedRun); }
    ~RunningListingTest() override { Mox::lookForUnfinishedFiles({}); }

    /// What is told of the model after each call, and before the first.
    std::vector<std::string> toldAfterCalls(RecoverableRun const& run) const
    {
        std::string const whole = folder.File("whole.mox");
        std::vector<std::string> told;
        for (std::size_t calls = 0; calls <= run.callCount(); ++calls) {
            run.writeWhole(whole, calls);
            told.push_back(toldOf(listed(whole)));
        }
        return told;
    }

    /// Lists until the run is over.
    void listBeside(RecoverableRun const& run)
    {
        std::vector<std::string> const told = toldAfterCalls(run);
        done.get() = 0;
        begun.get() = 0;
        Child writer([&] {
            Zyl2::Mox2::Model model;
            run.makeCalls(model, path, true, run.callCount(), [this](std::size_t calls) {
                done.get() = calls;
                begun.get() = 1;
                ::usleep(BetweenCalls);
            });
            model.close();
            begun.get() = 2;
            return 0;
        });
        while (begun.get() == 0)
            ::usleep(5);
        while (begun.get() == 1 && !HasFailure())
            expectOneOf(told);
        EXPECT_EQ(writer.wait(), "status 0");
    }

    /// The calls that are listed are those that had ended then.
    void expectOneOf(std::vector<std::string> const& told)
    {
        std::size_t const before = done.get();
        json const listing = listed(path);
        std::size_t const after = done.get() + 1;
        std::string const found = toldOf(listing);
        bool isTold = false;
        for (std::size_t calls = before; calls <= after && calls < told.size(); ++calls)
            isTold = isTold || found == told[calls];
        EXPECT_TRUE(isTold) << "between " << before << " and " << after
                            << " calls: " << listing.dump();
        ofRunsThatGoOn += listing.contains("incomplete") ? 1 : 0;
        ++listings;
    }

    Support::TemporaryFolder folder;
    std::string path = folder.File("running.mox");
    SharedNumber done;
    SharedNumber begun;
    std::uint32_t listings = 0;
    std::uint32_t ofRunsThatGoOn = 0;
};

} // namespace

TEST_F(RunningListingTest, ARunIsListedCallByCallAndDoesNotNoticeIt)
{
    std::uint32_t const enough = wanted("MOXWRITER_LISTED_RUNS", 40, 5);
    for (std::uint32_t seed = printedSeed(); listings < enough && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RecoverableRun const run(seed);
        listBeside(run);
        std::string const expected = folder.File("expected.mox");
        run.writeWhole(expected, run.callCount());
        EXPECT_TRUE(run.contentOf(path) == run.contentOf(expected));
        EXPECT_FALSE(std::filesystem::exists(path + ".recovery"));
        std::filesystem::remove(path);
    }
    std::cout << listings << " listings, " << ofRunsThatGoOn << " of runs that went on\n";
    EXPECT_GT(ofRunsThatGoOn, 0U);
}

} // namespace Fault
