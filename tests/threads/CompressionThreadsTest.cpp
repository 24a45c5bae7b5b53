#include "threads/RandomHost.h"
#include "threads/ThreadCount.h"

#include "container/TemporaryFile.h"
#include "moxread/Verify.h"
#include "support/EnvironmentVariable.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace Threads {

namespace {

using namespace Zyl2::Mox2;
using Support::EnvironmentVariable;
using Zyl2::Exception::FileWriteException;

/// Whether there are no more threads than that again: the system lists one a moment longer than it
/// is waited for.
bool comesDownTo(std::ptrdiff_t count)
{
    for (int attempt = 0; attempt < 1000 && threadCount() > count; ++attempt)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return threadCount() <= count;
}

SaverOptions withThreads(int threads, std::uint64_t blockSize = 4096)
{
    SaverOptions options;
    options.encoder = Encoder::Zlib;
    options.overwrite = true;
    options.threads = threads;
    options.blockSize = blockSize;
    return options;
}

/// A model of one shape that gets one array after the other.
class ArrayByArray
{
public:
    ArrayByArray(std::string const& path, SaverOptions const& options)
    {
        model.saveTo(path, options);
        model.addNode(NodeType::RootGroup, "root");
        shape_ = model.addNode(NodeType::Shape, "shape");
    }

    void add(std::size_t rows = 5000)
    {
        Array1d<float> values(rows, 0.0F);
        for (std::size_t row = 0; row < rows; ++row)
            values[row] = static_cast<float>((row + arrays_) % 1000) * 0.37F;
        add(values);
    }

    void add(Array1d<float> const& values)
    {
        model.addArrayProperty("array", DatasetType::Result10, values, shape_,
                               Step(std::to_string(arrays_++)));
    }

    Model model;

private:
    unsigned int shape_ = 0;
    unsigned int arrays_ = 0;
};

std::string writtenWithoutThreads(std::string const& path, unsigned int arrays)
{
    ArrayByArray host(path, withThreads(0));
    for (unsigned int array = 0; array < arrays; ++array)
        host.add();
    host.model.close();
    return Support::withoutWritingRecord(path);
}

/// \return what a forked process ends with after the action: a status, or 256 and the signal. One
///         that hangs gets SIGALRM.
int endOfFork(std::function<int()> const& action)
{
    constexpr unsigned int patience = 60;
    pid_t const child = fork();
    if (child == 0) {
        alarm(patience);
        int const status = action();
        // As a process does that ends in the usual way.
        std::fflush(nullptr);
        _exit(status);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 256 + WTERMSIG(status);
}

/// \return 0 when the call throws what it has to throw
int expectNotWritten(std::function<void()> const& call)
{
    try {
        call();
    } catch (FileWriteException const&) {
        return 0;
    } catch (...) {
        return 2;
    }
    return 1;
}

class CompressionThreadsTest : public testing::Test
{
protected:
    // With the first thread of a process, sanitizers start one of their own.
    CompressionThreadsTest()
    {
        std::thread([] {}).join();
    }

    EnvironmentVariable const noThreads{"MOXWRITER_THREADS", nullptr};
    Support::TemporaryFolder folder;
    std::string path = folder.File("a.mox");
};

} // namespace

TEST_F(CompressionThreadsTest, LeaveNoTraceInTheFile)
{
    // More of them are a matter of time.
    std::uint32_t const hosts = Support::wanted("MOXWRITER_RANDOM_HOSTS", 12, 3);
    std::string const other = folder.File("b.mox");
    for (std::uint32_t seed = 1; seed <= hosts; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomHost const host(seed);
        for (Encoder const encoder : RandomHost::encoders()) {
            host.write(path, encoder, 0);
            MoxRead::verify(path);
            std::string const expected = Support::withoutWritingRecord(path);
            for (int const threads : {1, 2, 4}) {
                host.write(other, encoder, threads);
                ASSERT_TRUE(Support::withoutWritingRecord(other) == expected)
                    << threads << " threads, encoder " << static_cast<int>(encoder);
            }
        }
    }
}

TEST_F(CompressionThreadsTest, OfSeveralModelsAtOnceWorkWithSeveralEncoders)
{
    constexpr unsigned int seed = 3;
    std::vector<std::future<void>> writing;
    std::vector<std::string> written;
    for (Encoder const encoder : RandomHost::encoders())
        for (int const threads : {0, 2}) {
            written.push_back(folder.File(std::to_string(written.size())));
            writing.push_back(std::async(std::launch::async, [=, to = written.back()] {
                RandomHost(seed).write(to, encoder, threads);
            }));
        }
    for (std::future<void>& one : writing)
        one.get();
    std::size_t number = 0;
    for (Encoder const encoder : RandomHost::encoders()) {
        RandomHost(seed).write(path, encoder, 0);
        std::string const expected = Support::withoutWritingRecord(path);
        for (int repetition = 0; repetition < 2; ++repetition)
            EXPECT_TRUE(Support::withoutWritingRecord(written[number++]) == expected);
    }
}

TEST_F(CompressionThreadsTest, CompressWhatIsLeftWhenTheModelIsClosed)
{
    std::ptrdiff_t const before = threadCount();
    constexpr std::uint64_t neverFull = std::uint64_t(1) << 30U;
    ArrayByArray host(path, withThreads(2, neverFull));
    host.add(500000);
    EXPECT_EQ(threadCount(), before);
    host.model.close();
    // Nothing else is to be done than to wait for the only block.
    EXPECT_GT(host.model.waitedSeconds(), 0.0);
    EXPECT_TRUE(comesDownTo(before));
    EXPECT_NO_THROW(MoxRead::verify(path));
}

TEST_F(CompressionThreadsTest, TakeABlockFromTheCallThatFillsIt)
{
    std::ptrdiff_t const before = threadCount();
    ArrayByArray host(path, withThreads(1, 65536));
    // Three of them fill a block.
    for (int array = 0; array < 2; ++array)
        host.add(5500);
    EXPECT_EQ(threadCount(), before);
    host.add(5500);
    EXPECT_GT(threadCount(), before);
    host.model.close();
    EXPECT_TRUE(comesDownTo(before));
    EXPECT_NO_THROW(MoxRead::verify(path));
}

TEST_F(CompressionThreadsTest, AreNotStartedUnlessTheyAreAskedFor)
{
    std::ptrdiff_t const before = threadCount();
    SaverOptions options;
    options.blockSize = 4096;
    ArrayByArray host(path, options);
    for (int array = 0; array < 20; ++array) {
        host.add();
        ASSERT_EQ(threadCount(), before);
    }
    host.model.close();
    EXPECT_EQ(host.model.waitedSeconds(), 0.0);
}

TEST_F(CompressionThreadsTest, AreAskedForByTheEnvironmentWhereTheHostLeavesItOpen)
{
    EnvironmentVariable const three("MOXWRITER_THREADS", "3");
    std::ptrdiff_t const before = threadCount();
    {
        ArrayByArray host(path, withThreads(-1));
        host.add(500000);
        host.add();
        EXPECT_GT(threadCount(), before);
    }
    ArrayByArray host(path, withThreads(0));
    host.add(500000);
    host.add();
    EXPECT_TRUE(comesDownTo(before));
}

TEST_F(CompressionThreadsTest, ThatThereAreNotAreRefused)
{
    Model model;
    for (char const* const text : {"two", "-1", "2 ", "1025", "99999999999"}) {
        EnvironmentVariable const setting("MOXWRITER_THREADS", text);
        try {
            model.saveTo(path);
            FAIL() << text;
        } catch (Zyl2::Exception::InvalidArguments const& failure) {
            EXPECT_EQ(Zyl2::Exception::detail(failure),
                      "MOXWRITER_THREADS asks for \"" + std::string(text) +
                          "\" threads, and a model starts 0 to 1024");
        }
    }
    EXPECT_THROW(model.saveTo(path, withThreads(1025)), Zyl2::Exception::InvalidArguments);
    EXPECT_THROW(model.saveTo(path, withThreads(0, 4294967295)), Zyl2::Exception::InvalidArguments);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(CompressionThreadsTest, EndWithCloseAndWithTheModel)
{
    std::ptrdiff_t const before = threadCount();
    {
        ArrayByArray host(path, withThreads(3));
        for (int array = 0; array < 20; ++array)
            host.add();
        EXPECT_GT(threadCount(), before);
        EXPECT_LE(threadCount(), before + 3);
        host.model.close();
        EXPECT_TRUE(comesDownTo(before));
        // Once more, without closing.
        ArrayByArray other(path, withThreads(3));
        for (int array = 0; array < 20; ++array)
            other.add();
    }
    EXPECT_TRUE(comesDownTo(before));
    EXPECT_NO_THROW(MoxRead::verify(path));
}

TEST_F(CompressionThreadsTest, LetAHostThatIsFasterWaitAndSayHowLong)
{
    // Noise takes long to compress.
    Array1d<float> values(20000, 0.0F);
    std::minstd_rand random(1);
    for (std::size_t row = 0; row < 20000; ++row)
        values[row] = static_cast<float>(random());
    ArrayByArray host(path, withThreads(1));
    for (int array = 0; array < 40; ++array)
        host.add(values);
    double const beforeClose = host.model.waitedSeconds();
    EXPECT_GT(beforeClose, 0.0);
    host.model.close();
    EXPECT_GE(host.model.waitedSeconds(), beforeClose);
    host.model.saveTo(path, withThreads(1));
    EXPECT_EQ(host.model.waitedSeconds(), 0.0);
}

TEST_F(CompressionThreadsTest, DoNotHideAFullDisk)
{
    std::ptrdiff_t const before = threadCount();
    ArrayByArray host("/dev/full", withThreads(2));
    int failures = 0;
    for (int array = 0; array < 20; ++array)
        failures += expectNotWritten([&] { host.add(); }) == 0 ? 1 : 0;
    EXPECT_GT(failures, 0);
    EXPECT_EQ(expectNotWritten([&] { host.model.close(); }), 0);
    EXPECT_TRUE(comesDownTo(before));
    EXPECT_NO_THROW(host.model.close());
}

TEST_F(CompressionThreadsTest, AreNotWaitedForInAForkedProcessAndNothingIsWrittenThere)
{
    std::string const expected = writtenWithoutThreads(folder.File("expected.mox"), 20);
    ArrayByArray host(path, withThreads(2));
    auto const addSome = [&host](int count) {
        for (int array = 0; array < count; ++array)
            host.add();
    };
    EXPECT_EQ(endOfFork([] { return 0; }), 0);
    addSome(5);
    EXPECT_EQ(endOfFork([&] { return expectNotWritten([&] { host.add(); }); }), 0);
    addSome(5);
    EXPECT_EQ(endOfFork([&] { return expectNotWritten([&] { host.model.close(); }); }), 0);
    addSome(5);
    EXPECT_EQ(endOfFork([&] {
                  {
                      Model const taken(std::move(host.model));
                  }
                  return 0;
              }),
              0);
    addSome(5);
    host.model.close();
    EXPECT_TRUE(Support::withoutWritingRecord(path) == expected);
}

} // namespace Threads
