#include "mpi/FailingNew.h"
#include "mpi/WrittenPieces.h"

#include "moxread/FormatError.h"
#include "moxread/Verify.h"
#include "support/FileSizeLimit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
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
    PartitionedModel model(ranks_.comm(), index(), twoPerFile());
    model.addNode(NodeType::RootGroup, "Wave");
    unsigned int const bar = model.addNode(NodeType::Shape, "Bar");
    std::vector<double> const values = {1, ranks_.rank() == 1 ? 1e300 : 2};
    std::string sentence;
    try {
        model.addArrayProperty("Large", DatasetType::Result10, values, bar, Step());
    } catch (Zyl2::Exception::OverflowError const& error) {
        sentence = Zyl2::Exception::detail(error);
    }
    EXPECT_EQ(sentence.find("row 1, column 0 holds 1"), ranks_.rank() == 1 ? 0 : std::string::npos);
    EXPECT_EQ(failureOf([&] { model.close(); }).find("Rank 1: Overflow error"), 0U);
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

TEST_F(RankFaultTest, AnyFaultAnywhereReachesAllRanks)
{
    // MOXWRITER_MPI_RUNS: how many of them.
    if (!ranks_.areMine())
        return;
    std::mt19937 random(1);
    // Not a matter of the model.
    std::string const path = index();
    int found = 0;
    for (int run = 0; run < runs(40); ++run) {
        // A rank that waits for ever is ended, and all others with it.
        alarm(30);
        int const victim = static_cast<int>(random() % 4);
        // Of the first ones, some are those of the constructor.
        auto const others = static_cast<long>(run % 4 == 0 ? random() % 20 : random() % 1200);
        std::string failure;
        bool isOwn = false;
        {
            // What is thrown to the host destroys the model, whether others know of it or not.
            try {
                if (ranks_.rank() == victim)
                    failAllocationAfter(others);
                PartitionedModel model(ranks_.comm(), path, twoPerFile());
                writePiece(model, Piece(ranks_.rank(), 4));
                model.close();
            } catch (RankFailure const& error) {
                failAllocationAfter(-1);
                failure = error.what();
            } catch (std::exception const& error) {
                failAllocationAfter(-1);
                isOwn = true;
                failure = error.what();
            }
            failAllocationAfter(-1);
        }
        int const hasFailed = failure.empty() ? 0 : 1;
        int failed = 0;
        MPI_Allreduce(&hasFailed, &failed, 1, MPI_INT, MPI_SUM, ranks_.comm());
        EXPECT_TRUE(failed == 0 || failed == 4) << failed << " ranks know of run " << run;
        if (ranks_.rank() != victim && hasFailed != 0) {
            EXPECT_EQ(failure.find("Rank " + std::to_string(victim) + ": "), 0U) << failure;
        }
        EXPECT_TRUE(!isOwn || ranks_.rank() == victim) << failure;
        found += failed / 4;
    }
    EXPECT_GT(found, runs(40) / 4);
    EXPECT_LT(found, runs(40));
}
