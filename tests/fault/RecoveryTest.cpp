#include "fault/Child.h"
#include "fault/Faults.h"
#include "fault/OwnDisk.h"
#include "fault/RecoverableRun.h"
#include "fault/SharedNumber.h"

#include "container/TemporaryFile.h"
#include "mox/commands/DiffCommand.h"
#include "mox/commands/RecoverCommand.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"
#include "support/EnvironmentVariable.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include "Zyl2/Wvf/LogLock.h"
#include "Zyl2/Wvf/RecoveryLog.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/InterruptedRun.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Fault {

namespace {

using namespace Zyl2::Mox2;
namespace fs = std::filesystem;
using Support::ReadFile;
using Support::wanted;
using Support::WriteFile;

constexpr std::size_t HeaderLength = 16;
constexpr std::size_t RecordHeaderLength = 16;
constexpr char const* resultName = "recovered";

SaverOptions recoverable(std::uint64_t blockSize = 1024, int threads = 0)
{
    SaverOptions options;
    options.recoverable = 1;
    options.blockSize = blockSize;
    options.threads = threads;
    return options;
}

std::vector<float> valuesOfStep(unsigned int step)
{
    std::vector<float> values(100);
    for (std::size_t at = 0; at < values.size(); ++at)
        values[at] = static_cast<float>(at * step);
    return values;
}

/// Two arrays in each step: five steps are five blocks of 1 KiB and an open one.
void addSteps(Model& model, unsigned int steps, unsigned int arraysOfLast = 2)
{
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    for (unsigned int step = 1; step <= steps; ++step)
        for (unsigned int array = 0; array < (step == steps ? arraysOfLast : 2); ++array)
            model.addArrayProperty("array " + std::to_string(array), DatasetType::Result10,
                                   valuesOfStep(step + array), shape, Step(std::to_string(step)));
}

struct Answer
{
    int status = 0;
    std::string out;
    std::string err;
};

class RecoveryTest : public testing::Test
{
protected:
    /// Leaves what a run of so many steps leaves that is killed.
    void leaveRun(unsigned int steps = 5, SaverOptions const& options = recoverable(),
                  unsigned int arraysOfLast = 2)
    {
        leaveRun(
            path, [&](Model& model) { addSteps(model, steps, arraysOfLast); }, options);
    }

    template <typename Action>
    static void leaveRun(std::string const& to, Action const& action,
                         SaverOptions const& options = recoverable())
    {
        ASSERT_EQ(Child([&]() -> int {
                      Model model;
                      model.saveTo(to, options);
                      action(model);
                      leave(HasFailure() ? 1 : 0);
                  }).wait(),
                  "status 0");
    }

    std::string wholeFile(unsigned int steps = 5, unsigned int arraysOfLast = 2)
    {
        std::string const whole = folder.File("whole.mox");
        fs::remove(whole);
        SaverOptions options;
        options.blockSize = 1024;
        Model model;
        model.saveTo(whole, options);
        addSteps(model, steps, arraysOfLast);
        model.close();
        return Support::withoutWritingRecord(whole);
    }

    Answer mox(std::string const& arguments)
    {
        std::string const out = folder.File("out.txt");
        std::string const err = folder.File("err.txt");
        std::string const command =
            std::string(MOX_COMMAND) + ' ' + arguments + " >" + out + " 2>" + err;
        int const status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
    }

    Answer recover(std::string const& more = "") { return mox("recover " + path + more); }

    std::string logPath() const { return beside + "/log"; }

    Support::TemporaryFolder folder;
    std::string path = folder.File("a.mox");
    std::string beside = path + ".recovery";
};

/// What is thrown becomes a sentence.
int recoverAsMainDoes(Mox::RecoverArguments const& arguments, std::ostream& out, std::ostream& err)
{
    try {
        return Mox::recoverFile(arguments, out, err);
    } catch (std::bad_alloc const& failure) {
        err << failure.what();
        return 1;
    }
}

/// Leaves at another place what a run has left, or has so far.
void copyRun(std::string const& from, std::string const& to)
{
    fs::remove_all(to + ".recovery");
    fs::copy(from + ".recovery", to + ".recovery", fs::copy_options::recursive);
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
}

/// Bytes that the system has given to a file, or to those in a folder.
std::uint64_t roomOf(std::string const& path)
{
    if (fs::is_directory(path)) {
        std::uint64_t room = 0;
        for (auto const& entry : fs::directory_iterator(path))
            room += roomOf(entry.path());
        return room;
    }
    constexpr std::uint64_t unit = 512;
    struct stat status
    {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return static_cast<std::uint64_t>(status.st_blocks) * unit;
}

/// Or for two seconds.
void waitUntilThere(std::string const& file)
{
    for (int look = 0; look < 20000 && !fs::exists(file); ++look)
        ::usleep(100);
}

bool areAlike(std::string const& left, std::string const& right)
{
    Mox::DiffArguments arguments;
    arguments.left = left;
    arguments.right = right;
    std::ostringstream out;
    std::ostringstream err;
    return Mox::diffFiles(arguments, out, err) == 0;
}

template <typename Action>
std::string detailOf(Action const& action)
{
    try {
        action();
    } catch (std::exception const& failure) {
        return std::string(failure.what()) + " | " + Zyl2::Exception::detail(failure);
    }
    return "nothing";
}

} // namespace

TEST_F(RecoveryTest, ARunThatClosesLeavesTheSameFileAndNothingBesideIt)
{
    for (int const threads : {0, 2}) {
        Model model;
        model.saveTo(path, recoverable(1024, threads));
        EXPECT_TRUE(fs::exists(logPath()));
        addSteps(model, 5);
        model.close();
        EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
        EXPECT_FALSE(fs::exists(beside));
        fs::remove(path);
    }
}

TEST_F(RecoveryTest, WithoutItNothingIsBesideTheFile)
{
    Support::EnvironmentVariable const unset("MOXWRITER_RECOVERABLE", nullptr);
    Model model;
    model.saveTo(path);
    addSteps(model, 2);
    EXPECT_FALSE(fs::exists(beside));
    EXPECT_FALSE(model.checkpoint());
}

TEST_F(RecoveryTest, ARunWhosePathIsWideIsRecoverableAndOneWithoutAFileIsNot)
{
    Model wide;
    wide.saveTo(std::wstring(path.begin(), path.end()), recoverable());
    EXPECT_TRUE(fs::exists(logPath()));
    Model none;
    none.saveTo("", recoverable());
    addSteps(none, 2);
    EXPECT_FALSE(none.checkpoint());
}

TEST_F(RecoveryTest, WhoeverComesSecondToALogIsTurnedAway)
{
    using Zyl2Wvf::LogLock;
    std::array<int, 2> logs{};
    for (int& log : logs)
        log = ::open(folder.File("log").c_str(), O_RDWR | O_CREAT, 0666);
    LogLock const first(logs[0]);
    LogLock const second(logs[1]);
    EXPECT_FALSE(first.Take());
    ASSERT_TRUE(second.Take());
    // The system does not name a process to itself.
    EXPECT_EQ(second.Take()->GetText(), "");
    EXPECT_TRUE(LogLock::HolderOf(logs[1]));
    EXPECT_FALSE(LogLock::HolderOf(logs[0]));
}

TEST_F(RecoveryTest, TheEnvironmentDecidesWhereTheHostLeavesItOpen)
{
    auto const isRecoverable = [this](char const* text, int asked) {
        Support::EnvironmentVariable const setting("MOXWRITER_RECOVERABLE", text);
        SaverOptions options;
        options.overwrite = true;
        options.recoverable = asked;
        Model model;
        model.saveTo(path, options);
        return fs::exists(beside);
    };
    EXPECT_TRUE(isRecoverable("1", -1));
    EXPECT_FALSE(isRecoverable("0", -1));
    EXPECT_FALSE(isRecoverable("", -1));
    EXPECT_FALSE(isRecoverable("1", 0));
    EXPECT_TRUE(isRecoverable("0", 1));
    EXPECT_EQ(detailOf([&] { isRecoverable("yes", -1); }),
              "Invalid arguments | MOXWRITER_RECOVERABLE is \"yes\", and a run is recoverable with "
              "1, and not with 0");
}

TEST_F(RecoveryTest, TheCommandMakesTheFileOfWhatAKilledRunLeft)
{
    leaveRun(5, recoverable(), 1);
    EXPECT_EQ(mox("verify " + path).status, 1);
    Answer const first = recover();
    EXPECT_EQ(first.out, path + ": recovered: complete up to step \"4\", and 1 array of step "
                                "\"5\"; 9 datasets in all\n");
    EXPECT_EQ(first.err, "");
    EXPECT_EQ(first.status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(5, 1));
    EXPECT_FALSE(fs::exists(beside));
    Answer const second = recover();
    EXPECT_EQ(second.out, path + ": whole; there is nothing to recover\n");
    EXPECT_EQ(second.status, 0);
}

TEST_F(RecoveryTest, CommandsThatReadSayThatAKilledRunCanBeRecovered)
{
    leaveRun(5, recoverable(), 1);
    std::string const advice = "; the run can be recovered (complete up to step \"4\", and 1 "
                               "array of step \"5\"): mox recover " +
                               path + '\n';
    for (char const* command : {"verify ", "check "}) {
        Answer const answer = mox(command + path);
        EXPECT_EQ(answer.status, 1) << command;
        EXPECT_EQ(answer.err,
                  path + ": incomplete: the root index at byte 12 was never written" + advice);
    }
    fs::remove_all(beside);
    EXPECT_EQ(mox("verify " + path).err,
              path + ": incomplete: the root index at byte 12 was never written\n");
}

TEST_F(RecoveryTest, WhatAKilledRunHadAddedIsListed)
{
    leaveRun(5, recoverable(), 1);
    std::string const state = "incomplete: the run can be recovered (complete up to step \"4\", "
                              "and 1 array of step \"5\"): mox recover " +
                              path + '\n';
    Answer const listing = mox("ls " + path);
    EXPECT_EQ(listing.err, "");
    EXPECT_EQ(listing.status, 0);
    EXPECT_EQ(listing.out.find(state + "mox 1.3: 3 nodes, 9 datasets\nwritten \""), 0U)
        << listing.out;
    EXPECT_NE(listing.out.find("    dataset \"array 0\" step \"5\": type 12, float, width 1, 100 "
                               "rows\n"),
              std::string::npos)
        << listing.out;
    Answer const blocks = mox("info " + path);
    EXPECT_EQ(blocks.status, 0);
    EXPECT_EQ(blocks.out.find(state), 0U) << blocks.out;
    // Three arrays of 400 bytes fill a block; those of three blocks are all there are.
    EXPECT_NE(blocks.out.find("\n     0  Heavy Data                 2800 "), std::string::npos)
        << blocks.out;
    EXPECT_EQ(mox("ls --json " + path).out.find("\"bytes\""), std::string::npos);
    EXPECT_EQ(mox("info --json " + path).status, 0);
}

TEST_F(RecoveryTest, AnOutputLeavesAllAsItWasAndGivesTheSameBytesAgain)
{
    leaveRun();
    std::string const log = ReadFile(logPath());
    std::string const before = ReadFile(path);
    std::string const output = folder.File("b.mox");
    EXPECT_EQ(recover(" -o " + output).status, 0);
    std::string const once = ReadFile(output);
    EXPECT_EQ(recover(" -o " + output).err, path + ": File exists.\n");
    EXPECT_EQ(recover(" -o " + output + " --overwrite").status, 0);
    // The writing record, too, is the run's and not the recovery's.
    EXPECT_TRUE(ReadFile(output) == once);
    EXPECT_TRUE(Support::withoutWritingRecord(output) == wholeFile());
    EXPECT_TRUE(ReadFile(logPath()) == log && ReadFile(path) == before);
}

TEST_F(RecoveryTest, ARunThatAddedNothingGivesAnEmptyModel)
{
    leaveRun(path, [](Model& /*model*/) {});
    EXPECT_EQ(recover().out, path + ": recovered: no steps; 0 datasets in all\n");
    EXPECT_NO_THROW(MoxRead::verify(path));
}

TEST_F(RecoveryTest, WhereTheRunWasNotRecoverableThereIsNothing)
{
    WriteFile(path, "");
    Answer const answer = recover();
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.err, path + ": There is nothing to recover from: the run was not recoverable, "
                                 "or another one has overwritten it.\n");
}

TEST_F(RecoveryTest, AnEarlierRunIsNotOverwrittenUnlessThatIsAskedFor)
{
    leaveRun();
    std::string const before = ReadFile(path);
    for (SaverOptions options : {SaverOptions(), recoverable()}) {
        Model model;
        std::string const told = detailOf([&] { model.saveTo(path, options); });
        EXPECT_EQ(told.find("File exists. | "), 0U) << told;
        EXPECT_NE(told.find("can be recovered: mox recover " + path), std::string::npos) << told;
    }
    EXPECT_TRUE(ReadFile(path) == before);
    SaverOptions options = recoverable();
    options.overwrite = true;
    leaveRun(3, options);
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(3));
}

TEST_F(RecoveryTest, ARunThatGoesOnIsLeftAlone)
{
    Model model;
    model.saveTo(path, recoverable());
    addSteps(model, 3);
    std::string const process = std::to_string(::getpid());
    EXPECT_EQ(recover().err,
              path + ": Unable to recover: the file is still being written by process " + process +
                  '\n');
    EXPECT_EQ(inChild([&] {
                  SaverOptions options = recoverable();
                  options.overwrite = true;
                  return detailOf([&] { Model().saveTo(path, options); });
              }),
              "File exists. | " + path + " is still being written by process " + process);
    // Looking takes this process's lock away neither here nor there.
    EXPECT_EQ(InterruptedRun::progressOf(path).datasets, 6U);
    EXPECT_EQ(mox("verify " + path).err,
              path + ": incomplete: the root index at byte 12 was never written; the run goes on "
                     "(complete up to step \"2\", and 2 arrays of step \"3\")\n");
    EXPECT_EQ(detailOf([&] { InterruptedRun const run(path); }),
              "Unable to recover | the file is still being written");
    InterruptedRun::removeRemains(path);
    EXPECT_TRUE(fs::exists(logPath()));
    model.close();
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(3));
}

TEST_F(RecoveryTest, WhatIsBesideTheFileTakesNoMoreRoomThanIsPromised)
{
    constexpr std::uint64_t kibibyte = 1024;
    std::vector<float> const values(300000, 0.5F);
    // A block is full when it has one of these arrays, with small ones before it or without.
    std::uint64_t const fullBlock = values.size() * sizeof(float) + 64 * kibibyte;
    std::uint64_t const page = 4 * kibibyte;
    for (int const threads : {0, 2}) {
        SCOPED_TRACE(threads);
        std::uint64_t mostOfBlocks = 0;
        SaverOptions options = recoverable(1024 * kibibyte, threads);
        options.overwrite = true;
        Model model;
        model.saveTo(path, options);
        model.addNode(NodeType::RootGroup, "root");
        unsigned int const shape = model.addNode(NodeType::Shape, "shape");
        for (unsigned int call = 3; call <= 600; ++call) {
            // Blocks are full one after the other at first; then the log grows.
            model.addArrayProperty("array", DatasetType::Result10,
                                   call < 15 || call % 100 == 0 ? values : valuesOfStep(call),
                                   shape, Step(std::to_string(call)));
            EXPECT_LE(roomOf(logPath()), page + call * kibibyte);
            mostOfBlocks = std::max(mostOfBlocks, roomOf(beside) - roomOf(logPath()));
        }
        std::cout << mostOfBlocks << " bytes of blocks, " << roomOf(logPath()) << " of the log\n";
        EXPECT_LE(mostOfBlocks, static_cast<unsigned int>(threads + 2) * (fullBlock + page));
        model.close();
    }
}

TEST_F(RecoveryTest, AForkedProcessThatLivesOnDoesNotPassForTheRun)
{
    SharedNumber isRecovered;
    ASSERT_EQ(Child([&]() -> int {
                  auto endsBefore = std::make_unique<Model>();
                  endsBefore->saveTo(folder.File("before.mox"), recoverable());
                  Model model;
                  model.saveTo(path, recoverable());
                  endsBefore.reset();
                  addSteps(model, 5);
                  if (::fork() == 0)
                      while (isRecovered.get() == 0)
                          ::usleep(1000);
                  leave(0);
              }).wait(),
              "status 0");
    Answer const answer = recover();
    isRecovered.get() = 1;
    EXPECT_EQ(answer.err, "");
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, WhatCanNotBeLookedAtIsNotTakenForRemains)
{
    leaveRun();
    SaverOptions options = recoverable();
    options.overwrite = true;
    {
        AtWork const atWork;
        Injection const noDescriptor(Place::Reservation, 0, Repeat::Once);
        EXPECT_NE(detailOf([&] { Model().saveTo(path, options); }).find("/log\" | "),
                  std::string::npos);
    }
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, AFolderThatCanNotBeOpenedIsNotLeftBehind)
{
    EXPECT_EQ(inChild([&] {
                  int const next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
                  ::close(next);
                  rlimit before{};
                  ::getrlimit(RLIMIT_NOFILE, &before);
                  rlimit const tooFew{static_cast<rlim_t>(next), before.rlim_max};
                  ::setrlimit(RLIMIT_NOFILE, &tooFew);
                  std::string told = detailOf([&] { Model().saveTo(path, recoverable()); });
                  ::setrlimit(RLIMIT_NOFILE, &before);
                  return told;
              }),
              "Unable to open file \"" + beside + "\" | Too many open files");
    EXPECT_FALSE(fs::exists(beside));
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(RecoveryTest, WhatSomebodyElseHasLeftIsRecoveredToAnotherPlace)
{
    leaveRun();
    ::chmod(logPath().c_str(), 0444);
    ::chmod(fs::path(path).parent_path().c_str(), 0777);
    std::string const output = folder.File("b.mox");
    EXPECT_EQ(inChild([&] {
                  // To root, nothing is somebody else's.
                  constexpr uid_t nobody = 65534;
                  uid_t const self = ::geteuid();
                  if (self == 0 && ::seteuid(nobody) != 0)
                      return std::string("nobody else");
                  std::string told = detailOf([&] { InterruptedRun(path).writeTo(output); });
                  static_cast<void>(::seteuid(self) == 0);
                  return told;
              }),
              "nothing");
    EXPECT_TRUE(Support::withoutWritingRecord(output) == wholeFile());
}

TEST_F(RecoveryTest, APathWithAZeroByteIsRefusedAndTouchesNothing)
{
    leaveRun();
    SaverOptions options = recoverable();
    options.overwrite = true;
    EXPECT_EQ(detailOf([&] { Model().saveTo(path + '\0' + "b", options); }),
              "Unable to open file \"" + path + "\" | the path holds a zero byte");
    EXPECT_TRUE(fs::exists(logPath()));
}

TEST_F(RecoveryTest, CallsThatFailedWithTheirValuesHalfThereAreInNobodysWay)
{
    class NoPieces : public ArrayPieces
    {
    public:
        NoPieces() : ArrayPieces(ArrayView::Element::Float32, 300, 1) {}
        ArrayView next() override { throw std::runtime_error("the host gives up"); }
    };
    leaveRun(path, [](Model& model) {
        addSteps(model, 2);
        StepList steps(1);
        steps.set(0, Step("3"));
        // Each of them fills a block.
        for (int call = 0; call < 3; ++call) {
            NoPieces pieces;
            EXPECT_THROW(
                model.addArrayPieces("pieces", DatasetType::Result10, pieces, IdsView(3U), steps),
                std::runtime_error);
        }
        model.addArrayProperty("array 0", DatasetType::Result10, valuesOfStep(3), 3U, Step("3"));
    });
    EXPECT_EQ(recover().out, path + ": recovered: complete up to step \"2\", and 1 array of step "
                                    "\"3\"; 5 datasets in all\n");
    MoxRead::Model model(path);
    EXPECT_EQ(model.unusedHeavyLength(), 3600U);
    MoxRead::Variable const* const last = model.variable(3, "array 0\x1E"
                                                            "3");
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(model.read(*last).floats(), valuesOfStep(3));
}

TEST_F(RecoveryTest, ValuesOfAFailedCallAreTakenFromABlockThatIsNotSaved)
{
    class OnePiece : public ArrayPieces
    {
    public:
        OnePiece() : ArrayPieces(ArrayView::Element::Float32, 300, 1) {}
        ArrayView next() override
        {
            if (std::exchange(isGiven_, true))
                throw std::runtime_error("the host gives up");
            return ArrayView(values_.data(), values_.size());
        }

    private:
        std::vector<float> const values_ = valuesOfStep(1);
        bool isGiven_ = false;
    };
    leaveRun(
        path,
        [](Model& model) {
            addSteps(model, 1);
            OnePiece pieces;
            EXPECT_THROW(model.addArrayPieces("pieces", DatasetType::Result10, pieces, IdsView(3U),
                                              StepList(1)),
                         std::runtime_error);
            model.addArrayProperty("more", DatasetType::Result10, valuesOfStep(3), 3U, Step("2"));
        },
        recoverable(65536));
    std::string const outline = folder.File("outline.mox");
    EXPECT_EQ(InterruptedRun::writeOutlineOf(path, outline).datasets, 3U);
    EXPECT_EQ(recover().status, 0);
    MoxRead::Model model(path);
    MoxRead::Variable const* const last = model.variable(3, "more\x1E"
                                                            "2");
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(model.read(*last).floats(), valuesOfStep(3));
}

TEST_F(RecoveryTest, AnOutputIsNotTheFileItself)
{
    leaveRun();
    Answer const answer = recover(" --overwrite -o " + path);
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.err, path + ": This is what -o OUT is to leave as it is; without, the file "
                                 "is recovered in its place.\n");
    EXPECT_TRUE(fs::exists(logPath()));
}

TEST_F(RecoveryTest, AForkedProcessAddsNothingAndRemovesNothing)
{
    SaverOptions threadsAlone = recoverable(1024, 2);
    threadsAlone.recoverable = 0;
    for (SaverOptions const& options : {recoverable(), recoverable(1024, 2), threadsAlone}) {
        SCOPED_TRACE(std::to_string(options.threads) +
                     " threads, recoverable: " + std::to_string(options.recoverable));
        auto const add = [](Model& model) {
            model.addArrayProperty("more", DatasetType::Result10, valuesOfStep(9), 3, Step());
        };
        Model model;
        model.saveTo(path, options);
        addSteps(model, 2);
        EXPECT_EQ(inChild([&] {
                      std::string told = detailOf([&] { add(model); });
                      told += "; " + detailOf([&] { model.close(); });
                      Model const taken(std::move(model));
                      return told;
                  }),
                  "Unable to write to file | the file belongs to the process that this one was "
                  "forked from; Unable to write to file | the file belongs to the process that "
                  "this one was forked from");
        add(model);
        EXPECT_EQ(fs::exists(logPath()), options.recoverable == 1);
        model.close();
        EXPECT_NO_THROW(MoxRead::verify(path));
        fs::remove(path);
    }
}

TEST_F(RecoveryTest, NamesMayHaveAnyBytesAndFoldersMayMove)
{
    std::string const home = folder.File("home");
    fs::create_directory(home);
    std::string const name = "\xff b\n.mox";
    leaveRun(home + '/' + name, [](Model& model) { addSteps(model, 5); });
    leaveRun(home + "/other", [](Model& model) { addSteps(model, 3); });
    std::string const moved = folder.File("moved");
    fs::copy(home, moved, fs::copy_options::recursive);
    fs::remove_all(home);
    for (unsigned int const steps : {5U, 3U}) {
        std::string const file = moved + '/' + (steps == 5 ? name : "other");
        InterruptedRun(file).writeTo(path);
        EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(steps));
    }
}

TEST_F(RecoveryTest, AHostMayChangeItsFolderAndUseASymbolicLink)
{
    fs::create_symlink(path, folder.File("link"));
    WriteFile(path, "");
    std::string const home = fs::path(path).parent_path();
    SaverOptions options = recoverable();
    options.overwrite = true;
    ASSERT_EQ(Child([&]() -> int {
                  Model model;
                  static_cast<void>(::chdir(home.c_str()) == 0);
                  model.saveTo("link", options);
                  static_cast<void>(::chdir("/") == 0);
                  addSteps(model, 5);
                  leave(0);
              }).wait(),
              "status 0");
    EXPECT_EQ(mox("recover " + folder.File("link")).status, 0);
    EXPECT_TRUE(fs::is_symlink(folder.File("link")));
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
    EXPECT_FALSE(fs::exists(beside));
}

TEST_F(RecoveryTest, ACheckpointIsOnTheDiskAndChangesNothing)
{
    EXPECT_EQ(detailOf([] { Model().checkpoint(); }).find("File not open."), 0U);
    Model model;
    model.saveTo(path, recoverable());
    addSteps(model, 2);
    EXPECT_TRUE(model.checkpoint());
    for (unsigned int step = 3; step <= 5; ++step)
        for (unsigned int array = 0; array < 2; ++array)
            model.addArrayProperty("array " + std::to_string(array), DatasetType::Result10,
                                   valuesOfStep(step + array), 3, Step(std::to_string(step)));
    EXPECT_TRUE(model.checkpoint());
    model.close();
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, ACheckpointThatFailsIsToldAndLosesNothing)
{
    Model model;
    model.saveTo(path, recoverable());
    addSteps(model, 5);
    for (Place const place : {Place::StreamCall, Place::File, Place::Reservation}) {
        std::size_t failures = 0;
        for (bool hasStruck = true; hasStruck && !HasFailure(); failures += hasStruck ? 1 : 0) {
            AtWork const atWork;
            Injection const injection(place, failures, Repeat::Once);
            std::string const told = detailOf([&] { model.checkpoint(); });
            hasStruck = injection.hasStruck();
            EXPECT_EQ(told.find("Unable to write to file | "), hasStruck ? 0U : std::string::npos)
                << told;
        }
        EXPECT_GT(failures, 0U);
    }
    EXPECT_TRUE(model.checkpoint());
    model.close();
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, ABlockThatCanNotBeOnTheDiskLikeItsCheckpointEndsTheCall)
{
    std::string const copy = folder.File("copy.mox");
    std::size_t failures = 0;
    for (bool hasStruck = true; hasStruck && !HasFailure(); failures += hasStruck ? 1 : 0) {
        SaverOptions options = recoverable();
        options.overwrite = true;
        Model model;
        model.saveTo(path, options);
        addSteps(model, 2);
        EXPECT_TRUE(model.checkpoint());
        std::size_t added = 4;
        {
            AtWork const atWork;
            Injection const injection(Place::File, failures, Repeat::Once);
            try {
                for (unsigned int step = 3; step <= 6; ++step, ++added)
                    model.addArrayProperty("later", DatasetType::Result10, valuesOfStep(step), 3U,
                                           Step(std::to_string(step)));
            } catch (Zyl2::Exception::FileWriteException const& failure) {
                EXPECT_NE(std::string(Zyl2::Exception::detail(failure)), "");
            }
            hasStruck = injection.hasStruck();
        }
        EXPECT_EQ(added == 8, !hasStruck);
        copyRun(path, copy);
        RunProgress const recovered = InterruptedRun(copy).writeTo(folder.File("b.mox"));
        EXPECT_EQ(recovered.damage, "");
        EXPECT_EQ(recovered.datasets, added);
        EXPECT_NO_THROW(MoxRead::verify(folder.File("b.mox")));
        try {
            model.close();
        } catch (Zyl2::Exception::FileWriteException const&) {
            EXPECT_TRUE(hasStruck);
        }
    }
    EXPECT_GT(failures, 1U);
}

TEST_F(RecoveryTest, ALogThatCanNotBeMappedIsToldOf)
{
    std::string told;
    bool hasStruck = true;
    for (std::size_t ordinal = 0; hasStruck; ++ordinal) {
        Model model;
        std::optional<Injection> injection;
        try {
            AtWork const atWork;
            injection.emplace(Place::Allocation, ordinal, Repeat::Once);
            model.saveTo(path, recoverable());
        } catch (std::exception const& failure) {
            told += Zyl2::Exception::detail(failure) + std::string("\n");
        }
        hasStruck = injection->hasStruck();
        injection.reset();
        model.close();
        fs::remove(path);
    }
    EXPECT_NE(told.find("no room for the recovery log: Cannot allocate memory\n"),
              std::string::npos)
        << told;
}

TEST_F(RecoveryTest, AFolderThatIsNotThereIsTold)
{
    std::string const nowhere = folder.File("nowhere") + "/a.mox";
    std::string const told =
        "Unable to open file \"" + nowhere + ".recovery\" | No such file or directory";
    EXPECT_EQ(detailOf([&] { Model().saveTo(nowhere, recoverable()); }), told);
    EXPECT_EQ(detailOf([&] { InterruptedRun const run(nowhere); }), told);
}

TEST_F(RecoveryTest, AFileThatIsNotTheRunsStaysAndIsTold)
{
    leaveRun();
    WriteFile(beside + "/notes", "not of the run");
    SaverOptions options = recoverable();
    options.overwrite = true;
    EXPECT_EQ(detailOf([&] { Model().saveTo(path, options); }),
              "Unable to open file \"" + beside + "\" | File exists");
    EXPECT_EQ(ReadFile(beside + "/notes"), "not of the run");
}

TEST_F(RecoveryTest, DamageOfARunThatGoesOnIsTold)
{
    Model model;
    model.saveTo(path, recoverable());
    addSteps(model, 3);
    std::string log = ReadFile(logPath());
    std::size_t const inName = log.find("array 1");
    ASSERT_NE(inName, std::string::npos);
    WriteFile(logPath(), log.replace(inName, 1, "A"));
    RunProgress const progress = InterruptedRun::progressOf(path);
    EXPECT_TRUE(progress.isGoingOn);
    EXPECT_EQ(progress.damage.find("the recovery log is damaged at byte "), 0U) << progress.damage;
    EXPECT_EQ(progress.datasets, 1U);
}

TEST_F(RecoveryTest, AWholeFileOfAnotherRunIsKept)
{
    leaveRun();
    wholeFile(2);
    fs::copy_file(folder.File("whole.mox"), path, fs::copy_options::overwrite_existing);
    std::string const whole = ReadFile(path);
    Answer const answer = recover();
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.err, path + ": The file is whole, and what is in " + beside +
                              " is of another run: recover that with -o OUT, or remove it.\n");
    EXPECT_TRUE(ReadFile(path) == whole);
    EXPECT_TRUE(fs::exists(logPath()));
}

TEST_F(RecoveryTest, ANewerFileIsNeitherReplacedByAnEarlierRunNorDescribedAsIt)
{
    leaveRun(1);
    std::string const earlier = wholeFile(1);
    SaverOptions options = recoverable();
    options.recoverable = 0;
    options.overwrite = true;
    Model model;
    model.saveTo(path, options);
    // What it has written so far is nothing at first, and then begins with the earlier run's bytes.
    for (unsigned int const steps : {0U, 1U, 5U}) {
        SCOPED_TRACE(steps);
        if (steps == 1)
            addSteps(model, 1);
        for (unsigned int step = 2; step <= steps; ++step)
            model.addArrayProperty("more", DatasetType::Result10, valuesOfStep(step), 3U,
                                   Step(std::to_string(step)));
        std::string const before = ReadFile(path);
        Answer const answer = recover();
        EXPECT_EQ(answer.status, 1);
        EXPECT_EQ(answer.err, path + ": The file is of another run than what is in " + beside +
                                  ": recover that with -o OUT, or remove it.\n");
        EXPECT_TRUE(ReadFile(path) == before);
        EXPECT_NE(mox("ls " + path).status, 0);
        EXPECT_EQ(mox("verify " + path).err.find("can be recovered"), std::string::npos);
    }
    std::string const output = folder.File("b.mox");
    EXPECT_EQ(recover(" -o " + output).status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(output) == earlier);
    model.close();
    EXPECT_NO_THROW(MoxRead::verify(path));
}

TEST_F(RecoveryTest, ARunWhoseFileWasRemovedDoesNotReplaceTheNextOne)
{
    leaveRun(1);
    fs::remove(path);
    SaverOptions options = recoverable();
    options.recoverable = 0;
    leaveRun(2, options);
    std::string const before = ReadFile(path);
    EXPECT_EQ(recover().status, 1);
    EXPECT_TRUE(ReadFile(path) == before);
    fs::remove(path);
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(1));
}

TEST_F(RecoveryTest, ARunThatDiedWhileItClosedIsNotTakenForAnother)
{
    leaveRun();
    wholeFile();
    // The blocks and the root index, but not all bytes behind it.
    std::string const whole = ReadFile(folder.File("whole.mox"));
    std::string const cut = whole.substr(0, whole.size() - 1);
    WriteFile(path, cut);
    EXPECT_EQ(recover().status, 1);
    EXPECT_TRUE(ReadFile(path) == cut);
    InterruptedRun(path).noteWhole();
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, ALogThatKnowsNoNumberOfItsFileIsRecovered)
{
    leaveRun();
    std::string log = ReadFile(logPath());
    WriteFile(logPath(), log.replace(12, 4, 4, '\0'));
    std::string bytes = ReadFile(path);
    WriteFile(path, bytes.replace(20, 4, 4, '\0'));
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, AFileThatCanNotBeMarkedAsTheRunsIsToldOf)
{
    AtWork const atWork;
    Injection const fullDisk(Place::File, 0, Repeat::Once);
    EXPECT_EQ(detailOf([&] { Model().saveTo(path, recoverable()); }),
              "Unable to write to file | the model file: Input/output error");
    EXPECT_FALSE(fs::exists(beside));
}

TEST_F(RecoveryTest, OtherVersionsAndWhatIsNoLogAreToldOfAndKept)
{
    leaveRun();
    std::string log = ReadFile(logPath());
    log[8] = 2;
    WriteFile(logPath(), log);
    EXPECT_EQ(recover().err, path + ": Unable to recover: the recovery log has version 2, and this "
                                    "library reads version 1\n");
    WriteFile(logPath(), "something else");
    EXPECT_EQ(recover().err, path + ": Unable to recover: the recovery log is not one\n");
    WriteFile(logPath(), std::string(100, '\0'));
    EXPECT_EQ(recover().err, path + ": Unable to recover: the run had not begun to write\n");
    EXPECT_TRUE(fs::exists(beside + "/block-1"));
}

TEST_F(RecoveryTest, AFolderInTheLogsPlaceIsNoLog)
{
    leaveRun();
    fs::remove(logPath());
    fs::create_directory(logPath());
    EXPECT_EQ(detailOf([&] { InterruptedRun::progressOf(path); }),
              "Unable to recover | the recovery log is not a file");
    EXPECT_EQ(detailOf([&] { InterruptedRun const run(path); }),
              "Unable to recover | the recovery log can't be read: Is a directory");
}

TEST_F(RecoveryTest, ATornRecordIsPassedOver)
{
    leaveRun();
    std::string const log = ReadFile(logPath());
    // The last record is the end of a call: without its checksum it is as it is being written.
    std::size_t at = HeaderLength;
    std::size_t last = at;
    for (;;) {
        std::uint64_t length = 0;
        std::uint32_t type = 0;
        std::memcpy(&length, log.data() + at, sizeof length);
        std::memcpy(&type, log.data() + at + 8, sizeof type);
        if (type == 0)
            break;
        last = at;
        at += RecordHeaderLength + length;
    }
    for (std::size_t const kept : {12U, 8U, 20U}) {
        std::string torn = log;
        torn.replace(last + kept, at - last - kept, at - last - kept, '\0');
        if (kept > 12)
            torn.replace(last + 12, 4, 4, '\0');
        WriteFile(logPath(), torn);
        std::string const output = folder.File("torn.mox");
        EXPECT_EQ(recover(" --overwrite -o " + output).out,
                  output + ": recovered: complete up to step \"4\", and 1 array of step \"5\"; 9 "
                           "datasets in all; 1 call was under way\n");
    }
}

TEST_F(RecoveryTest, ADamagedLogIsToldOfAndGivesWhatComesBeforeElsewhere)
{
    leaveRun();
    std::string log = ReadFile(logPath());
    std::size_t const inStep3 = log.find(std::string("3\0\0\0\0", 5), log.find("array 1"));
    ASSERT_NE(inStep3, std::string::npos);
    log[inStep3] = '7';
    WriteFile(logPath(), log);
    std::string const before = ReadFile(path);
    Answer const answer = recover();
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.err.find(path + ": the recovery log is damaged at byte "), 0U) << answer.err;
    EXPECT_NE(answer.err.find("; mox recover -o OUT makes a file of 5 calls before"),
              std::string::npos)
        << answer.err;
    EXPECT_TRUE(ReadFile(path) == before && ReadFile(logPath()) == log);
    std::string const output = folder.File("b.mox");
    Answer const elsewhere = recover(" -o " + output);
    EXPECT_EQ(elsewhere.status, 0) << elsewhere.err;
    EXPECT_NE(elsewhere.out.find("; the rest is lost: "), std::string::npos);
    EXPECT_TRUE(Support::withoutWritingRecord(output) == wholeFile(2, 1));
}

TEST_F(RecoveryTest, DamagedValuesAreToldOfAndGiveWhatComesBeforeElsewhere)
{
    leaveRun(1);
    std::string const block = beside + "/block-1";
    std::string bytes = ReadFile(block);
    bytes[450] = static_cast<char>(bytes[450] ^ 1);
    WriteFile(block, bytes);
    EXPECT_EQ(recover().err,
              path + ": the values of call 4 of 4 are damaged; mox recover -o OUT makes "
                     "a file of 3 calls before, and leaves all as it is.\n");
    std::string const output = folder.File("b.mox");
    EXPECT_EQ(recover(" -o " + output).status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(output) == wholeFile(1, 1));
}

TEST_F(RecoveryTest, AModelFileThatLostABlockIsToldOf)
{
    leaveRun();
    std::string bytes = ReadFile(path);
    ASSERT_GT(bytes.size(), 2900U);
    bytes[2900] = static_cast<char>(bytes[2900] ^ 1);
    WriteFile(path, bytes);
    EXPECT_EQ(recover().err.find(path + ": the values of call 3 of 12 are damaged"), 0U);
    fs::remove(path);
    EXPECT_EQ(recover().err.find(path + ": the values of call 3 of 12 are damaged"), 0U);
}

TEST_F(RecoveryTest, ARecoveryThatIsKilledAtAnyMomentIsDoneAgain)
{
    std::uint32_t const kills = wanted("MOXWRITER_KILLED_RECOVERIES", 12, 6);
    leaveRun();
    std::string const saved = folder.File("saved");
    fs::copy(beside, saved, fs::copy_options::recursive);
    std::string const incomplete = ReadFile(path);
    std::string const expected = wholeFile();
    std::uint32_t const seed = std::random_device()();
    std::cout << "seed: " << seed << '\n';
    std::mt19937 random(seed);
    int midway = 0;
    for (std::uint32_t kill = 0; kill < kills && !HasFailure(); ++kill) {
        fs::remove_all(beside);
        fs::copy(saved, beside, fs::copy_options::recursive);
        WriteFile(path, incomplete);
        Child child([&] {
            ::execl(MOX_COMMAND, MOX_COMMAND, "recover", path.c_str(), nullptr);
            return 1;
        });
        // Every other one has begun to write when it is killed.
        if (kill % 2 == 0)
            ::usleep(static_cast<useconds_t>(random() % 12000));
        else
            waitUntilThere(beside + '/' + resultName);
        child.kill();
        bool const wasKilled = child.wait() == "signal 9";
        midway += wasKilled && fs::exists(beside + '/' + resultName) ? 1 : 0;
        Answer const answer = recover();
        ASSERT_EQ(answer.status, 0) << answer.err;
        EXPECT_TRUE(Support::withoutWritingRecord(path) == expected);
        EXPECT_FALSE(fs::exists(beside));
    }
    std::cout << midway << " of " << kills << " were killed while they wrote\n";
    EXPECT_GT(midway, 0);
}

TEST_F(RecoveryTest, ARecoveryThatDiedWhenTheFileWasInItsPlaceHasNothingLeftToDo)
{
    leaveRun();
    {
        InterruptedRun run(path);
        run.writeTo(run.temporaryPath());
        run.noteWhole();
        fs::rename(run.temporaryPath(), path);
    }
    EXPECT_EQ(recover().out, path + ": whole; there is nothing to recover\n");
    EXPECT_FALSE(fs::exists(beside));
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile());
}

TEST_F(RecoveryTest, WhatIsLeftOfARunThatTidiedUpIsInNobodysWay)
{
    wholeFile(2);
    fs::copy_file(folder.File("whole.mox"), path);
    fs::create_directory(beside);
    WriteFile(beside + "/block-1", "bytes");
    EXPECT_EQ(recover().out, path + ": whole; there is nothing to recover\n");
    EXPECT_FALSE(fs::exists(beside));
    fs::remove(path);
    fs::create_directory(beside);
    WriteFile(beside + "/block-1", "bytes");
    leaveRun(2);
    EXPECT_EQ(recover().status, 0);
    EXPECT_TRUE(Support::withoutWritingRecord(path) == wholeFile(2));
}

TEST_F(RecoveryTest, AFullDiskEndsACallAndLosesNothingOfWhatCameBefore)
{
    for (int const threads : {0, 2}) {
        for (unsigned int const kilobytes : {80U, 100U, 116U, 136U, 172U, 208U}) {
            SCOPED_TRACE(std::to_string(kilobytes) + " KiB, threads " + std::to_string(threads));
            std::string const told = inChild([&] {
                OwnDisk const disk(std::to_string(kilobytes) + "k");
                std::string const full = disk.folder() + "/a.mox";
                Model model;
                std::size_t steps = 0;
                try {
                    model.saveTo(full, recoverable(8192, threads));
                    model.addNode(NodeType::RootGroup, "root");
                    model.addNode(NodeType::Shape, "shape");
                    std::mt19937 random(kilobytes);
                    for (; steps < 400; ++steps) {
                        std::vector<float> values(400);
                        for (float& value : values)
                            value = static_cast<float>(random());
                        model.addArrayProperty("noise", DatasetType::Result10, values, 3U,
                                               Step(std::to_string(steps)));
                    }
                    return std::string("it was not full");
                } catch (Zyl2::Exception::FileWriteException const&) {
                    // As it is meant to end.
                } catch (std::exception const& failure) {
                    return std::string(failure.what()) + Zyl2::Exception::detail(failure);
                }
                std::size_t const added = steps;
                copyRun(full, path);
                RunProgress const progress = InterruptedRun::progressOf(path);
                try {
                    model.close();
                } catch (std::exception const&) {
                    // The disk is as full as before.
                }
                bool const isAll = progress.datasets == added && progress.damage.empty();
                return isAll ? std::string("all")
                             : std::to_string(progress.datasets) + " of " + std::to_string(added) +
                                   progress.damage;
            });
            EXPECT_EQ(told, "all");
            EXPECT_EQ(recover().status, 0);
            EXPECT_NO_THROW(MoxRead::verify(path));
        }
    }
}

namespace {

/// Makes the calls of a run in which some operation fails, and judges what can be recovered.
class FaultyRun
{
public:
    FaultyRun(std::uint32_t seed, std::string folder)
        : run_(seed, RecoverableRun::Cursor::Set), path_(folder + "/faulty.mox"),
          recovered_(folder + "/recovered.mox"), expected_(folder + "/expected.mox")
    {}

    /// \return whether the run got as far as the fault
    bool failAt(Place place, std::size_t ordinal, Repeat repeat)
    {
        std::optional<Injection> injection;
        bool hasStruck = false;
        run([&] { injection.emplace(place, ordinal, repeat); },
            [&] {
                hasStruck = injection->hasStruck();
                injection.reset();
            });
        return hasStruck;
    }

    /// \param bytes that the disk takes before it is full
    /// \return whether that was less than the run needed
    bool fillDisk(std::size_t bytes)
    {
        std::optional<FullDisk> disk;
        bool wasFull = false;
        run([&] { disk.emplace(bytes); },
            [&] {
                wasFull = disk->wasFull();
                disk.reset();
            });
        return wasFull;
    }

private:
    template <typename Begin, typename End>
    void run(Begin const& beginFault, End const& endFault)
    {
        std::vector<std::size_t> added;
        {
            Model model;
            beginFault();
            bool const isOpen = run_.open(model, path_, true);
            if (isOpen)
                added = run_.addedCalls(model);
            endFault();
            if (isOpen)
                expectRecovered(added);
            try {
                model.close();
            } catch (std::exception const&) {
                // It had failed before.
            }
        }
        fs::remove_all(path_ + ".recovery");
    }

    /// As after the end of the process, when there is room again.
    void expectRecovered(std::vector<std::size_t> added)
    {
        copyRun(path_, recovered_);
        Mox::RecoverArguments arguments;
        arguments.file = recovered_;
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(Mox::recoverFile(arguments, out, err), 0) << err.str();
        EXPECT_FALSE(fs::exists(recovered_ + ".recovery"));
        std::string const difference = differenceFrom(added);
        if (difference.empty())
            return;
        // A call may find no memory for its answer when all is done.
        std::size_t first = 0;
        while (first < added.size() && added[first] == first)
            ++first;
        added.insert(added.begin() + static_cast<std::ptrdiff_t>(first), first);
        EXPECT_EQ(differenceFrom(added), "") << "without it: " << difference;
    }

    std::string differenceFrom(std::vector<std::size_t> const& calls)
    {
        {
            Model model;
            run_.open(model, expected_, false);
            run_.makeCalls(model, calls);
            model.close();
        }
        Mox::DiffArguments arguments;
        arguments.left = expected_;
        arguments.right = recovered_;
        std::ostringstream out;
        std::ostringstream err;
        int const status = Mox::diffFiles(arguments, out, err);
        return status == 0 ? "" : out.str() + err.str();
    }

    RecoverableRun run_;
    std::string path_;
    std::string recovered_;
    std::string expected_;
};

} // namespace

TEST_F(RecoveryTest, WhateverFailsWhatCameBeforeAndAfterCanBeRecovered)
{
    std::uint32_t const runs = wanted("MOXWRITER_FAULTY_RUNS", 1);
    for (std::uint32_t seed = 1; seed <= runs; ++seed) {
        for (Place const place :
             {Place::Allocation, Place::StreamCall, Place::Device, Place::Reservation}) {
            for (Repeat const repeat : {Repeat::Once, Repeat::FromThenOn}) {
                FaultyRun run(seed, fs::path(path).parent_path());
                // Most of the hundreds of allocations of a call are alike.
                std::size_t const stride =
                    place == Place::Allocation ? wanted("MOXWRITER_ALLOCATION_STRIDE", 13, 37) : 1;
                std::size_t ordinal = seed % stride;
                for (bool hasStruck = true; hasStruck && !HasFailure(); ordinal += stride) {
                    SCOPED_TRACE("seed " + std::to_string(seed) + ", place " +
                                 std::to_string(static_cast<int>(place)) + ", operation " +
                                 std::to_string(ordinal));
                    hasStruck = run.failAt(place, ordinal, repeat);
                }
            }
        }
    }
}

TEST_F(RecoveryTest, ACallThatFindsNoMemoryAtAnyMomentIsInNobodysWay)
{
    struct Case
    {
        char const* what;
        unsigned int arraysBefore;
        int threads;
        std::function<void(Model&)> call;
    };
    auto const addArray = [](Model& model) {
        model.addArrayProperty("more", DatasetType::Result10, valuesOfStep(7), 3U, Step("2"));
    };
    std::vector<Case> const cases{{"values in a new block", 0, 0, addArray},
                                  {"values that fill a block", 2, 0, addArray},
                                  {"values that fill a block for a thread", 2, 1, addArray},
                                  {"a row of nodes", 1, 0, [](Model& model) {
                                       model.addAssemblyComponents({"/root/a/b", "/root/a/b/c"});
                                   }}};
    std::string const left = folder.File("left.mox");
    std::string const output = folder.File("output.mox");
    std::array<std::string, 2> const expected{folder.File("without.mox"), folder.File("with.mox")};
    for (Case const& one : cases) {
        SCOPED_TRACE(one.what);
        SaverOptions options = recoverable(1024, one.threads);
        options.overwrite = true;
        auto const begin = [&](Model& model, std::string const& to) {
            model.saveTo(to, options);
            addSteps(model, 1, one.arraysBefore);
        };
        for (std::size_t calls = 0; calls < expected.size(); ++calls) {
            Model model;
            begin(model, expected[calls]);
            if (calls != 0)
                one.call(model);
            model.close();
        }
        bool hasStruck = true;
        for (std::size_t ordinal = 0; hasStruck && !HasFailure(); ordinal += Support::stride(13)) {
            SCOPED_TRACE("allocation " + std::to_string(ordinal));
            Model model;
            begin(model, path);
            std::string told;
            {
                Injection const injection(Place::Allocation, ordinal, Repeat::Once);
                told = detailOf([&] {
                    AtWork const atWork;
                    one.call(model);
                });
                hasStruck = injection.hasStruck();
            }
            copyRun(path, left);
            RunProgress const progress = InterruptedRun(left).writeTo(output);
            EXPECT_EQ(progress.damage, "");
            EXPECT_TRUE(areAlike(output, expected[0]) || areAlike(output, expected[1])) << told;
            EXPECT_EQ(InterruptedRun::writeOutlineOf(left, output).datasets, progress.datasets);
            std::string const later = detailOf([&] { model.addNode(NodeType::Group, "later"); });
            EXPECT_TRUE(later == "nothing" ||
                        later.find("added some of its nodes") != std::string::npos)
                << later;
            // Where that call was refused, nothing follows.
            detailOf([&] { model.close(); });
        }
    }
}

TEST_F(RecoveryTest, WhereverTheDiskIsFullWhatCameBeforeAndAfterCanBeRecovered)
{
    std::uint32_t const disks = wanted("MOXWRITER_FULL_DISKS", 30, 15);
    std::uint32_t const first = wanted("MOXWRITER_DAMAGED_SEED", std::random_device()());
    std::cout << "first seed: " << first << '\n';
    int full = 0;
    for (std::uint32_t seed = first; seed != first + disks && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        FaultyRun run(seed, fs::path(path).parent_path());
        // The smallest log takes 4 KiB, and so does the first block.
        full += run.fillDisk(4000 + random() % (random() % 2 == 0 ? 60000 : 600000)) ? 1 : 0;
    }
    std::cout << full << " of " << disks << " disks were full\n";
    EXPECT_GT(full, 0);
}

TEST_F(RecoveryTest, WhateverFailsInARecoveryALaterOneSucceeds)
{
    leaveRun();
    std::string const left = folder.File("left.mox");
    copyRun(path, left);
    std::string const expected = wholeFile();
    Mox::RecoverArguments arguments;
    arguments.file = path;
    for (Place const place :
         {Place::File, Place::StreamCall, Place::Device, Place::Reservation, Place::Allocation}) {
        // Hundreds of allocations are alike.
        std::size_t const stride =
            place == Place::Allocation ? wanted("MOXWRITER_ALLOCATION_STRIDE", 97, 797) : 1;
        std::size_t ordinal = 0;
        for (bool hasStruck = true; hasStruck && !HasFailure(); ordinal += stride) {
            SCOPED_TRACE("place " + std::to_string(static_cast<int>(place)) + ", operation " +
                         std::to_string(ordinal));
            copyRun(left, path);
            std::ostringstream out;
            std::ostringstream err;
            int status = 0;
            {
                AtWork const atWork;
                Injection const injection(place, ordinal, Repeat::Once);
                status = recoverAsMainDoes(arguments, out, err);
                hasStruck = injection.hasStruck();
            }
            EXPECT_EQ(status == 0, err.str().empty());
            EXPECT_TRUE(status != 0 || Support::withoutWritingRecord(path) == expected);
            EXPECT_EQ(Mox::recoverFile(arguments, out, err), 0) << err.str();
            EXPECT_TRUE(Support::withoutWritingRecord(path) == expected);
            EXPECT_FALSE(fs::exists(beside));
        }
        EXPECT_GT(ordinal, stride) << "nothing was made to fail";
    }
}

TEST_F(RecoveryTest, WhateverIsDamagedNoWrongValueIsRecovered)
{
    std::uint32_t const cases = wanted("MOXWRITER_DAMAGED_RUNS", 150, 20);
    std::uint32_t const first = wanted("MOXWRITER_DAMAGED_SEED", std::random_device()());
    std::cout << "first seed: " << first << '\n';
    int whole = 0;
    int part = 0;
    int refused = 0;
    std::string const output = folder.File("b.mox");
    for (std::uint32_t seed = first; seed != first + cases && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        RecoverableRun const run(seed % 16);
        fs::remove_all(beside);
        fs::remove(path);
        leaveRun(
            path,
            [&](Model& model) {
                model.close();
                run.makeCalls(model, path, true, run.callCount());
            },
            SaverOptions());
        std::vector<fs::path> files{path};
        for (auto const& entry : fs::directory_iterator(beside))
            files.push_back(entry.path());
        files.push_back(logPath());
        std::sort(files.begin(), files.end());
        fs::path const damaged = files[random() % files.size()];
        std::string bytes = ReadFile(damaged);
        // The room behind what was written is of no interest.
        std::size_t const used = bytes.find_last_not_of('\0') + 1;
        if (used == 0)
            continue;
        if (random() % 4 == 0)
            bytes.resize(random() % used);
        else
            for (auto left = 1 + random() % 3; left != 0; --left)
                bytes[random() % used] = static_cast<char>(random());
        WriteFile(damaged, bytes);
        try {
            RunProgress const progress = InterruptedRun(path).writeTo(output);
            std::string const expected = folder.File("expected.mox");
            run.writeWhole(expected, progress.calls);
            EXPECT_TRUE(run.contentOf(output) == run.contentOf(expected));
            (progress.damage.empty() ? whole : part) += 1;
            EXPECT_TRUE(!progress.damage.empty() || progress.calls + 1 >= run.callCount())
                << damaged << ": " << progress.calls << " of " << run.callCount();
        } catch (Zyl2::Exception::Exception const& failure) {
            EXPECT_NE(std::string(Zyl2::Exception::detail(failure)), "");
            ++refused;
        }
    }
    std::cout << whole << " whole, " << part << " in part, " << refused << " refused\n";
}

namespace {

struct ForgedRecord
{
    std::uint32_t type;
    std::string payload;
};

using ForgedRecords = std::vector<ForgedRecord>;
using LogType = Zyl2Wvf::RecoveryLog::Type;

ForgedRecords recordsOf(std::string const& log)
{
    ForgedRecords records;
    for (std::size_t at = HeaderLength;;) {
        std::uint64_t length = 0;
        std::uint32_t type = 0;
        std::memcpy(&length, log.data() + at, sizeof length);
        std::memcpy(&type, log.data() + at + sizeof length, sizeof type);
        if (type == 0)
            return records;
        records.push_back({type, log.substr(at + RecordHeaderLength, length)});
        at += RecordHeaderLength + length;
    }
}

/// With checksums that are right.
std::string logOf(std::string const& header, ForgedRecords const& records)
{
    std::string log = header;
    for (ForgedRecord const& record : records) {
        std::array<unsigned char, RecordHeaderLength> head{};
        std::uint64_t const length = record.payload.size();
        std::memcpy(head.data(), &length, sizeof length);
        std::memcpy(head.data() + sizeof length, &record.type, sizeof record.type);
        std::uint32_t const checksum = Zyl2Wvf::RecoveryLog::ChecksumOf(
            head.data(), reinterpret_cast<unsigned char const*>(record.payload.data()), length);
        std::memcpy(head.data() + RecordHeaderLength - sizeof checksum, &checksum, sizeof checksum);
        log.append(reinterpret_cast<char const*>(head.data()), head.size()).append(record.payload);
    }
    return log + std::string(1024, '\0');
}

/// The place of the `number`-th record of a type.
std::size_t placeOf(ForgedRecords const& records, LogType type, std::size_t number = 0)
{
    std::size_t at = 0;
    for (;; ++at)
        if (records.at(at).type == static_cast<std::uint32_t>(type) && number-- == 0)
            return at;
}

template <typename T>
void setIn(ForgedRecord& record, std::size_t at, T value)
{
    record.payload.replace(at, sizeof value,
                           std::string(reinterpret_cast<char const*>(&value), sizeof value));
}

struct Forgery
{
    char const* what;
    std::function<void(ForgedRecords&)> forge;
    char const* sentence =
        "Unable to recover | the recovery log is damaged: a record is not what a run writes";
};

/// Two nodes and then arrays, each of them a call, what it has filled, and its end.
std::vector<Forgery> forgeries()
{
    using Records = ForgedRecords;
    auto const repeat = [](LogType type, std::size_t number, LogType behind, std::size_t which) {
        return [=](Records& log) {
            ForgedRecord const record = log[placeOf(log, type, number)];
            std::size_t const at = placeOf(log, behind, which) + 1;
            log.insert(log.begin() + static_cast<std::ptrdiff_t>(at), record);
        };
    };
    auto const remove = [](LogType type, std::size_t number) {
        return [=](Records& log) {
            log.erase(log.begin() + static_cast<std::ptrdiff_t>(placeOf(log, type, number)));
        };
    };
    auto const set = [](LogType type, std::size_t number, std::size_t at, auto value) {
        return [=](Records& log) { setIn(log[placeOf(log, type, number)], at, value); };
    };
    constexpr char const* lost = "the values of call 3 of 12 are damaged";
    constexpr std::size_t offset = 8;
    constexpr std::size_t size = 16;
    constexpr std::size_t content = 20;
    auto const lengthen = [](std::size_t at) {
        return [at](Records& log) { ++log[placeOf(log, LogType::BlockSaved)].payload[at]; };
    };
    constexpr std::size_t name = 5;
    constexpr std::size_t element = name + sizeof(std::uint32_t) + 7 + sizeof(std::uint32_t);
    constexpr std::size_t rows = element + 1;
    constexpr std::size_t array = 2;
    return {
        {"a call within a call", remove(LogType::End, 1)},
        {"a second start", repeat(LogType::Start, 0, LogType::End, 1)},
        {"values of no call", repeat(LogType::Filled, 0, LogType::End, array)},
        {"values twice", repeat(LogType::Filled, 0, LogType::Filled, 0)},
        {"values before any block", remove(LogType::BlockBegun, 0)},
        {"values before the first block",
         [](Records& log) {
             setIn(log[placeOf(log, LogType::BlockBegun)], 16, std::uint64_t(4));
             setIn(log[placeOf(log, LogType::Filled)], 0, std::uint64_t(4));
         },
         lost},
        {"values before their block", set(LogType::Filled, 4, 0, std::uint64_t(0))},
        {"values before earlier ones", set(LogType::Filled, 1, 0, std::uint64_t(4))},
        {"values off their places", set(LogType::Filled, 1, 0, std::uint64_t(401))},
        {"an end of nothing", repeat(LogType::End, 1, LogType::End, 1)},
        {"an end that there is not", set(LogType::End, 1, 0, std::uint32_t(3))},
        {"nodes that there are not", set(LogType::End, 1, 4, std::uint32_t(9))},
        {"a node that was not added, and what is added to it",
         set(LogType::End, 1, 0, std::uint32_t(2))},
        {"a longer end", [](Records& log) { log[placeOf(log, LogType::End, 1)].payload += '\0'; }},
        {"a shorter end",
         [](Records& log) { log[placeOf(log, LogType::End, 1)].payload.pop_back(); }},
        {"a slot that there is not", set(LogType::BlockSaved, 0, 0, std::uint64_t(77))},
        {"a block of too much content", set(LogType::BlockSaved, 0, content, ~std::uint32_t(0))},
        {"content that ends before the values",
         set(LogType::BlockSaved, 0, content, std::uint32_t(100)), lost},
        {"content longer than the stream's", lengthen(content), lost},
        {"a stream that ends before its file's bytes", lengthen(size), lost},
        {"a stream shorter than its length", set(LogType::BlockSaved, 0, size, std::uint32_t(3)),
         lost},
        {"a stream beyond the file", set(LogType::BlockSaved, 0, offset, std::uint64_t(1) << 40U),
         lost},
        {"no values", set(LogType::Filled, 0, 8, std::uint64_t(0)), lost},
        {"values beyond their file", set(LogType::Filled, 9, 8, std::uint64_t(1) << 30U),
         "the values of call 12 of 12 are damaged"},
        {"a file that there is not", set(LogType::BlockBegun, 3, 8, std::uint64_t(77)),
         "the values of call 12 of 12 are damaged"},
        {"a call of no kind", set(LogType::Call, 1, 0, std::uint8_t(77))},
        {"a name beyond the record", set(LogType::Call, array, name, ~std::uint32_t(0))},
        {"an attribute of no type",
         [](Records& log) {
             ForgedRecord& node = log[placeOf(log, LogType::Call)];
             // The number of attributes, which comes last.
             setIn(node, node.payload.size() - sizeof(std::uint32_t), std::uint32_t(1));
             node.payload += std::string("\1\0\0\0a\115", 6);
         }},
        {"elements that are not stored", set(LogType::Call, array, element, std::uint8_t(77))},
        {"other rows than values", set(LogType::Call, array, rows, std::int64_t(99))},
        {"rows without values", remove(LogType::Filled, 0)},
        {"a second root",
         [](Records& log) {
             Records const call{log[placeOf(log, LogType::Call)], log[placeOf(log, LogType::End)]};
             std::size_t const at = placeOf(log, LogType::End) + 1;
             log.insert(log.begin() + static_cast<std::ptrdiff_t>(at), call.begin(), call.end());
         }},
        {"no start", remove(LogType::Start, 0),
         "Unable to recover | the recovery log does not begin as one"},
    };
}

} // namespace

TEST_F(RecoveryTest, AWholeRecordThatNoRunWritesIsTold)
{
    leaveRun();
    std::string const log = ReadFile(logPath());
    std::string const header = log.substr(0, HeaderLength);
    std::string const output = folder.File("b.mox");
    auto const told = [&] {
        std::string damage;
        std::string const refusal =
            detailOf([&] { damage = InterruptedRun(path).writeTo(output).damage; });
        return damage.empty() ? refusal : damage;
    };
    WriteFile(logPath(), logOf(header, recordsOf(log)));
    EXPECT_EQ(told(), "nothing");
    WriteFile(logPath(), logOf(header, {}));
    EXPECT_EQ(told(), "Unable to recover | the run had not begun to write");
    std::string notEmpty = logOf(header, recordsOf(log));
    std::size_t const end = notEmpty.size() - 1024;
    notEmpty.back() = 'x';
    WriteFile(logPath(), notEmpty);
    EXPECT_EQ(told(), "the recovery log is damaged at byte " + std::to_string(end));
    WriteFile(logPath(), notEmpty.substr(0, end + 5));
    EXPECT_EQ(told(), "the recovery log is cut off at byte " + std::to_string(end + 5));
    for (Forgery const& forgery : forgeries()) {
        SCOPED_TRACE(forgery.what);
        ForgedRecords records = recordsOf(log);
        forgery.forge(records);
        WriteFile(logPath(), logOf(header, records));
        EXPECT_EQ(told(), forgery.sentence);
    }
}

TEST_F(RecoveryTest, AForgedLogEndsInAFileOrASentence)
{
    std::uint32_t const cases = wanted("MOXWRITER_FORGED_LOGS", 150, 30);
    std::uint32_t const first = wanted("MOXWRITER_DAMAGED_SEED", std::random_device()());
    std::cout << "first seed: " << first << '\n';
    RecoverableRun const run(first % 64);
    leaveRun(
        path,
        [&](Model& model) {
            model.close();
            run.makeCalls(model, path, true, run.callCount());
        },
        SaverOptions());
    std::string const log = ReadFile(logPath());
    std::vector<std::size_t> records;
    for (std::size_t at = HeaderLength;;) {
        std::uint64_t length = 0;
        std::memcpy(&length, log.data() + at, sizeof length);
        if (length == 0)
            break;
        records.push_back(at);
        at += RecordHeaderLength + length;
    }
    std::uint32_t made = 0;
    std::uint32_t refused = 0;
    for (std::uint32_t seed = first; seed != first + cases; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::string forged = log;
        std::size_t const at = records[random() % records.size()];
        std::uint64_t length = 0;
        std::memcpy(&length, log.data() + at, sizeof length);
        for (auto left = 1 + random() % 3; left != 0; --left)
            forged[at + RecordHeaderLength + random() % length] = static_cast<char>(random());
        auto const* const header = reinterpret_cast<unsigned char const*>(forged.data()) + at;
        std::uint32_t const checksum =
            Zyl2Wvf::RecoveryLog::ChecksumOf(header, header + RecordHeaderLength, length);
        std::memcpy(forged.data() + at + 12, &checksum, sizeof checksum);
        WriteFile(logPath(), forged);
        try {
            InterruptedRun(path).writeTo(folder.File("b.mox"));
            ++made;
        } catch (Zyl2::Exception::Exception const& failure) {
            ++refused;
            EXPECT_NE(std::string(Zyl2::Exception::detail(failure)), "");
        }
    }
    std::cout << made << " made, " << refused << " refused\n";
    EXPECT_EQ(made + refused, cases);
    EXPECT_GT(refused, 0U);
}

} // namespace Fault
