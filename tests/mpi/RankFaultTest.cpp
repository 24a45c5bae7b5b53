#include "mpi/FailingNew.h"
#include "mpi/WrittenPieces.h"

#include "moxread/FormatError.h"
#include "moxread/Verify.h"
#include "support/FileSizeLimit.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <random>

#include <unistd.h>

using Zyl2::Mox2::ArrayView;
using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeProperties;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::Step;
using Zyl2::Mpi::PartitionedModel;
using Zyl2::Mpi::PartitionedOptions;
using Zyl2::Mpi::RankFailure;

namespace {

class RankFaultTest : public testing::Test
{
protected:
    RankFaultTest() : ranks_(4), folder_(ranks_.areMine() ? ranks_.folder() : "") {}
    ~RankFaultTest() override
    {
        if (!ranks_.areMine())
            return;
        MPI_Barrier(ranks_.comm());
        if (ranks_.rank() == 0)
            std::filesystem::remove_all(folder_);
    }

    std::string index() const { return folder_ + "/wave.moxs"; }

    bool areEqualOnAllRanks(std::string const& text) const
    {
        std::string first = text;
        auto size = static_cast<int>(text.size());
        MPI_Bcast(&size, 1, MPI_INT, 0, ranks_.comm());
        first.resize(static_cast<std::size_t>(size));
        MPI_Bcast(&first[0], size, MPI_CHAR, 0, ranks_.comm());
        return first == text;
    }

    static PartitionedOptions twoPerFile()
    {
        PartitionedOptions options;
        options.ranksPerFile = 2;
        options.messageBytes = 4096;
        options.saver.overwrite = true;
        return options;
    }

    FirstRanks ranks_;
    std::string folder_;
};

std::string failureOf(std::function<void()> const& action)
{
    try {
        action();
    } catch (RankFailure const& failure) {
        return failure.what();
    }
    return "";
}

int runs(int usual)
{
    char const* const given = std::getenv("MOXWRITER_MPI_RUNS");
    return given == nullptr ? usual : std::atoi(given);
}

} // namespace

TEST_F(RankFaultTest, ABadArgumentOfOneRankReachesAllWithTheNextStep)
{
    if (!ranks_.areMine())
        return;
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    model.addNode(NodeType::RootGroup, "Wave");
    unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
    if (ranks_.rank() == 3) {
        EXPECT_THROW(
            model.addArrayProperty(DatasetType::Displacement, std::vector<float>(4), bar, Step()),
            Zyl2::Exception::InvalidArguments);
    }
    std::string const sentence =
        "Rank 3: Invalid arguments: Displacement needs 3 columns, the array has 1";
    // The rank itself can't go on as if nothing had been.
    EXPECT_EQ(failureOf([&] { model.setCurrentNodeId(bar); }), ranks_.rank() == 3 ? sentence : "");
    EXPECT_EQ(failureOf([&] { model.step(); }), sentence);
    EXPECT_EQ(failureOf([&] { model.step(); }), sentence);
    EXPECT_EQ(failureOf([&] { model.addNode(NodeType::Group, "More"); }), sentence);
    // What was told once is not told again.
    EXPECT_NO_THROW(model.close());
    if (ranks_.rank() == 0) {
        EXPECT_THROW(MoxRead::verify(folder_ + "/wave.1.mox"), MoxRead::FormatError);
    }
}

TEST_F(RankFaultTest, AValueThatDoesNotFitIsRefusedOnItsRank)
{
    if (!ranks_.areMine())
        return;
    auto const expectRefusal = [&](DatasetType type, auto value, std::string const& range) {
        PartitionedModel model(ranks_.comm(), index(), twoPerFile());
        model.addNode(NodeType::RootGroup, "Wave");
        unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
        std::vector<decltype(value)> const values = {1, ranks_.rank() == 1 ? value : 2};
        std::string sentence;
        try {
            model.addArrayProperty("Large", type, values, bar, Step());
        } catch (Zyl2::Exception::OverflowError const& error) {
            sentence = Zyl2::Exception::detail(error);
        }
        EXPECT_EQ(sentence, ranks_.rank() == 1 ? "row 1, column 0 holds " + std::to_string(value) +
                                                     ", which is beyond the range of " + range
                                               : "");
        EXPECT_EQ(failureOf([&] { model.close(); }).find("Rank 1: Overflow error"), 0U);
    };
    expectRefusal(DatasetType::Result10, 1e300, "a float");
    std::string const range = "0 to 4294967295";
    expectRefusal(DatasetType::NodeIds, -1, range);
    expectRefusal(DatasetType::NodeIds, -1L, range);
    expectRefusal(DatasetType::NodeIds, 4294967296L, range);
    expectRefusal(DatasetType::NodeIds, 4294967296UL, range);
}

TEST_F(RankFaultTest, AnExceptionOfOneHostEndsTheOthersStep)
{
    if (!ranks_.areMine())
        return;
    std::string failure;
    try {
        PartitionedModel model(ranks_.comm(), index(), twoPerFile());
        if (ranks_.rank() == 2)
            throw std::runtime_error("the host's own");
        model.step();
    } catch (std::exception const& error) {
        failure = error.what();
    }
    EXPECT_EQ(failure, ranks_.rank() == 2
                           ? "the host's own"
                           : "Rank 2: the model was destroyed by an exception of the host");
}

TEST_F(RankFaultTest, RanksThatCallOtherThingsAreToldSo)
{
    if (!ranks_.areMine())
        return;
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    EXPECT_THROW(ranks_.rank() == 1 ? model.close() : model.step(),
                 Zyl2::Exception::InvalidObjectState);
}

TEST_F(RankFaultTest, WhatRanksHaveToSayAlikeIsCompared)
{
    if (!ranks_.areMine())
        return;
    std::string const rank = std::to_string(ranks_.rank());
    {
        PartitionedModel model(ranks_.comm(), index(), twoPerFile());
        model.addNode(NodeType::RootGroup, ranks_.rank() == 3 ? "Other" : "Wave");
        EXPECT_EQ(failureOf([&] { model.step(); }),
                  "Rank 2: Invalid arguments: the root of rank 3 is \"Other\", that of rank 2 "
                  "\"Wave\", or of another type");
    }
    {
        PartitionedModel model(ranks_.comm(), index(), twoPerFile());
        unsigned int const root = model.addNode(NodeType::RootGroup, "Wave");
        Attributes attributes;
        attributes.set("State", "begun");
        model.setNodeData(root, NodeProperties(), attributes);
        model.step();
        // Another value is as good, if all say it.
        attributes.set("State", "done");
        model.setNodeData(root, NodeProperties(), attributes);
        EXPECT_NO_THROW(model.step());
        attributes.set("State", rank);
        model.setNodeData(root, NodeProperties(), attributes);
        EXPECT_EQ(failureOf([&] { model.close(); }),
                  "Rank 0: Invalid arguments: the attribute \"State\" of \"Wave\" is not the same "
                  "on ranks 0 and 1");
    }
}

TEST_F(RankFaultTest, OwnAttributesAreNotForHosts)
{
    if (!ranks_.areMine())
        return;
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    model.addNode(NodeType::RootGroup, "Wave");
    unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
    Attributes attributes;
    attributes.set("Rank", 1);
    EXPECT_THROW(model.addArrayProperty("R", DatasetType::Result10, std::vector<float>(1), bar,
                                        Step("S", attributes)),
                 Zyl2::Exception::InvalidArguments);
    EXPECT_THROW(model.step(), RankFailure);
}

TEST_F(RankFaultTest, AFileThatExistsEndsAllAndLeavesNothingBehind)
{
    if (!ranks_.areMine())
        return;
    PartitionedOptions options = twoPerFile();
    options.saver.overwrite = false;
    if (ranks_.rank() == 0)
        std::ofstream(folder_ + "/wave.1.mox") << "precious";
    MPI_Barrier(ranks_.comm());
    std::string const failure =
        failureOf([&] { PartitionedModel(ranks_.comm(), index(), options); });
    EXPECT_EQ(failure.find("Rank 2: File exists."), 0U) << failure;
    MPI_Barrier(ranks_.comm());
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/wave.0.mox"));
    EXPECT_FALSE(std::filesystem::exists(index()));
    EXPECT_EQ(std::filesystem::file_size(folder_ + "/wave.1.mox"), 8U);
}

TEST_F(RankFaultTest, AnIndexThatExistsEndsAllAndStaysAsItIs)
{
    if (!ranks_.areMine())
        return;
    PartitionedOptions options = twoPerFile();
    options.saver.overwrite = false;
    if (ranks_.rank() == 0)
        std::ofstream(index()) << "precious";
    MPI_Barrier(ranks_.comm());
    std::string const failure =
        failureOf([&] { PartitionedModel(ranks_.comm(), index(), options); });
    EXPECT_NE(failure.find(index() + " exists, and overwriting was not asked for"),
              std::string::npos)
        << failure;
    MPI_Barrier(ranks_.comm());
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/wave.0.mox"));
    EXPECT_EQ(std::filesystem::file_size(index()), 8U);
}

TEST_F(RankFaultTest, AnIndexThatCanNotBeWrittenEndsAllAndLeavesNothingHalf)
{
    if (!ranks_.areMine())
        return;
    for (auto const& [obstacle, told] : std::map<std::string, std::string>{
             {".part", "/wave.moxs.part cannot be created: Is a directory"},
             {"", "/wave.moxs cannot be replaced: Is a directory"}}) {
        std::string const inTheWay = index() + obstacle;
        if (ranks_.rank() == 0)
            std::filesystem::create_directory(inTheWay);
        MPI_Barrier(ranks_.comm());
        std::string const failure =
            failureOf([&] { PartitionedModel(ranks_.comm(), index(), twoPerFile()); });
        EXPECT_EQ(failure.find("Rank 0: "), 0U) << failure;
        EXPECT_NE(failure.find(folder_ + told), std::string::npos) << failure;
        MPI_Barrier(ranks_.comm());
        if (ranks_.rank() == 0) {
            EXPECT_FALSE(std::filesystem::exists(folder_ + "/wave.0.mox"));
            std::filesystem::remove(inTheWay);
            EXPECT_FALSE(std::filesystem::exists(index() + ".part"));
        }
        MPI_Barrier(ranks_.comm());
    }
}

TEST_F(RankFaultTest, AFileThatIsGoneWhenItIsClosedIsTold)
{
    if (!ranks_.areMine())
        return;
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    model.addNode(NodeType::RootGroup, "Wave");
    model.step();
    if (ranks_.rank() == 0)
        std::filesystem::remove(folder_ + "/wave.1.mox");
    MPI_Barrier(ranks_.comm());
    EXPECT_EQ(failureOf([&] { model.close(); }),
              "Rank 2: Unable to write to file: the file was removed or replaced while it "
              "was being written");
}

TEST_F(RankFaultTest, OptionsThatNoModelCanHaveAreRefusedOnAllRanks)
{
    if (!ranks_.areMine())
        return;
    PartitionedOptions negative = twoPerFile();
    negative.ranksPerFile = -1;
    EXPECT_EQ(failureOf([&] { PartitionedModel(ranks_.comm(), index(), negative); }),
              "Rank 0: Invalid arguments: ranksPerFile is negative");
    PartitionedOptions tooSmall = twoPerFile();
    tooSmall.messageBytes = 4095;
    EXPECT_EQ(failureOf([&] { PartitionedModel(ranks_.comm(), index(), tooSmall); }),
              "Rank 0: Invalid arguments: messageBytes is not between 4096 and 1073741824");
}

TEST_F(RankFaultTest, AModelThatWasClosedTakesNothing)
{
    if (!ranks_.areMine())
        return;
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    model.addNode(NodeType::RootGroup, "Wave");
    model.close();
    Support::Thrown const refusal{17, "Invalid object state",
                                  "PartitionedModel::Impl::requireUsable", "Zyl2/Mpi", 10};
    using Zyl2::Exception::InvalidObjectState;
    Support::expectThrown<InvalidObjectState>([&] { model.addNode(NodeType::Group, "More"); },
                                              refusal);
    Support::expectThrown<InvalidObjectState>([&] { model.step(); }, refusal);
}

TEST_F(RankFaultTest, AnIndexNeedsItsEnding)
{
    if (!ranks_.areMine())
        return;
    EXPECT_EQ(failureOf([&] { PartitionedModel(ranks_.comm(), folder_ + "/wave.mox"); }),
              "Rank 0: Invalid arguments: the path \"" + folder_ +
                  "/wave.mox\" does not end with .moxs");
}

TEST_F(RankFaultTest, AFullDiskOfOneWriterReachesAll)
{
    if (!ranks_.areMine())
        return;
    PartitionedOptions options = twoPerFile();
    options.saver.blockSize = 10000;
    PartitionedModel model(ranks_.comm(), index(), options);
    model.addNode(NodeType::RootGroup, "Wave");
    unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
    std::mt19937 random(1);
    std::vector<unsigned int> values(8000);
    std::generate(values.begin(), values.end(), std::ref(random));
    std::string failure;
    {
        std::optional<Support::FileSizeLimit> limit;
        if (ranks_.rank() == 2)
            limit.emplace(20000);
        failure = failureOf([&] {
            for (int step = 0; step < 4; ++step) {
                model.addArrayProperty("V" + std::to_string(step), DatasetType::Result10, values,
                                       bar, Step());
                model.step();
            }
            model.close();
        });
    }
    EXPECT_EQ(failure.find("Rank 2: Unable to write to file"), 0U) << failure;
    EXPECT_TRUE(areEqualOnAllRanks(failure));
}

TEST_F(RankFaultTest, RanksThatDifferInPathOrOptionsAreToldSoAndDoNotWaitForEachOther)
{
    if (!ranks_.areMine())
        return;
    std::string const sentence =
        "Rank 0: Invalid arguments: the path or the options are not the same on all ranks";
    PartitionedOptions options = twoPerFile();
    options.ranksPerFile = ranks_.rank() == 1 ? 0 : 2;
    EXPECT_EQ(failureOf([&] { PartitionedModel(ranks_.comm(), index(), options); }), sentence);
    std::string const path = folder_ + (ranks_.rank() == 1 ? "/other.moxs" : "/wave.moxs");
    EXPECT_EQ(failureOf([&] { PartitionedModel(ranks_.comm(), path, twoPerFile()); }), sentence);
}

namespace {

enum class Fault
{
    Allocation,
    Write,
    Argument
};

/// What one rank meets while all of them write a model.
class FaultyRun
{
public:
    FaultyRun(int run, std::mt19937& random)
        : fault_(static_cast<Fault>(run % 3)), victim_(static_cast<int>(random() % 4))
    {
        auto const place = static_cast<long>(random());
        switch (fault_) {
        case Fault::Allocation:
            // Of the first ones, some are those of the constructor.
            place_ = place % (run % 4 == 0 ? 20 : 1200);
            break;
        case Fault::Write:
            // Only these write files.
            victim_ -= victim_ % 2;
            place_ = place % 6000;
            break;
        case Fault::Argument:
            place_ = place % 12;
            break;
        }
    }

    Fault fault() const { return fault_; }
    int victim() const { return victim_; }

    void write(FirstRanks const& ranks, std::string const& path, PartitionedOptions const& options)
    {
        bool const isVictim = ranks.rank() == victim_;
        std::optional<Support::FileSizeLimit> limit;
        if (isVictim && fault_ == Fault::Write)
            limit.emplace(static_cast<rlim_t>(place_));
        try {
            if (isVictim && fault_ == Fault::Allocation)
                failAllocationAfter(place_);
            PartitionedModel model(ranks.comm(), path, options);
            long call = 0;
            auto const meet = [&] {
                if (isVictim && fault_ == Fault::Argument && call++ == place_)
                    model.addArrayProperty(DatasetType::Displacement, std::vector<float>(1), 1U,
                                           Step());
            };
            // What is thrown to the host destroys the model, whether others know of it or not.
            writeBar(model, Piece(ranks.rank(), ranks.size()), meet, [&] {
                model.step();
                ++steps_;
            });
            model.close();
        } catch (std::exception const& error) {
            failAllocationAfter(-1);
            isOwn_ = dynamic_cast<RankFailure const*>(&error) == nullptr;
            failure_ = error.what();
        }
        failAllocationAfter(-1);
    }

    /// How many steps this rank has ended.
    int steps() const { return steps_; }
    /// Empty where nothing has failed.
    std::string const& failure() const { return failure_; }
    /// Whether this rank was told of it by its own call, and not by a collective one.
    bool isOwn() const { return isOwn_; }

private:
    Fault fault_;
    int victim_;
    long place_ = 0;
    int steps_ = 0;
    std::string failure_;
    bool isOwn_ = false;
};

} // namespace

TEST_F(RankFaultTest, AnyFaultAnywhereReachesAllRanksWithTheNextCollectiveCall)
{
    // MOXWRITER_MPI_RUNS: how many of them.
    if (!ranks_.areMine())
        return;
    std::mt19937 random(1);
    // Not a matter of the model.
    std::string const path = index();
    PartitionedOptions options = twoPerFile();
    options.saver.blockSize = 400;
    std::array<int, 3> found{};
    int const count = runs(60);
    for (int number = 0; number < count; ++number) {
        // A rank that waits for ever is ended, and all others with it.
        alarm(30);
        FaultyRun run(number, random);
        run.write(ranks_, path, options);
        bool const hasFailed = !run.failure().empty();
        // How many have failed, how few steps one of them has ended, and, as a negative one, how
        // many.
        std::array<int, 3> const mine = {hasFailed ? 1 : 0, run.steps(), -run.steps()};
        std::array<int, 3> all{};
        MPI_Allreduce(mine.data(), all.data(), 1, MPI_INT, MPI_SUM, ranks_.comm());
        MPI_Allreduce(&mine[1], &all[1], 2, MPI_INT, MPI_MIN, ranks_.comm());
        EXPECT_TRUE(all[0] == 0 || all[0] == 4) << all[0] << " ranks know of run " << number;
        EXPECT_EQ(all[1], -all[2]) << "some ranks go on in run " << number;
        if (ranks_.rank() != run.victim() && hasFailed) {
            EXPECT_EQ(run.failure().find("Rank " + std::to_string(run.victim()) + ": "), 0U)
                << run.failure();
        }
        EXPECT_TRUE(!run.isOwn() || ranks_.rank() == run.victim()) << run.failure();
        found[static_cast<std::size_t>(run.fault())] += all[0] / 4;
    }
    for (int const ofKind : found)
        EXPECT_GT(ofKind, count / 12);
    EXPECT_LT(found[0] + found[1] + found[2], count);
    if (ranks_.rank() == 0)
        std::printf("of %d runs, %d lacked memory, %d could not write, %d had a bad argument\n",
                    count, found[0], found[1], found[2]);
}

TEST_F(RankFaultTest, ARankWithoutMemoryAtAnyMomentOfACollectiveCallTellsAll)
{
    if (!ranks_.areMine())
        return;
    std::string const path = index();
    PartitionedOptions const options = twoPerFile();
    bool const isVictim = ranks_.rank() == 0;
    Attributes state;
    state.set("State", "begun");
    for (bool const isOpening : {true, false}) {
        int told = 4;
        for (long others = 0; told != 0 && !HasFailure(); ++others) {
            SCOPED_TRACE((isOpening ? "opening, allocation " : "step, allocation ") +
                         std::to_string(others));
            alarm(30);
            std::string failure;
            try {
                failAllocationAfter(isVictim && isOpening ? others : -1);
                PartitionedModel model(ranks_.comm(), path, options);
                failAllocationAfter(-1);
                unsigned int const root = model.addNode(NodeType::RootGroup, "Wave");
                model.setNodeData(root, NodeProperties(), state);
                failAllocationAfter(isVictim && !isOpening ? others : -1);
                model.step();
                failAllocationAfter(-1);
                model.close();
            } catch (std::exception const& error) {
                failAllocationAfter(-1);
                failure = error.what();
            }
            int const isTold = failure.empty() ? 0 : 1;
            MPI_Allreduce(&isTold, &told, 1, MPI_INT, MPI_SUM, ranks_.comm());
            EXPECT_TRUE(told == 0 || told == 4) << told << " ranks know";
            if (!isVictim && told != 0) {
                EXPECT_EQ(failure.find("Rank 0: "), 0U) << failure;
            }
            // Otherwise nothing was made to fail.
            EXPECT_TRUE(told != 0 || others > 3);
        }
    }
}
