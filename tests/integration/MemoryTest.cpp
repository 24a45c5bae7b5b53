#include "support/Environment.h"
#include "support/EnvironmentVariable.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace Integration {

namespace {

constexpr std::uint64_t mebibyte = 1048576;
constexpr std::uint64_t blockSize = 8 * mebibyte;

/// What was released goes back to the system at once. Else the allocator, or a sanitizer, keeps it
/// back, and it could not be told from what the library holds.
constexpr char const* allocatorSettings =
    "MALLOC_MMAP_THRESHOLD_=1048576 "
    "ASAN_OPTIONS=quarantine_size_mb=0:thread_local_quarantine_size_kb=0 ";

struct ClosePipe
{
    void operator()(std::FILE* stream) const { pclose(stream); }
};

/// Runs a process of its own, so that its memory holds nothing else, and reads what it prints.
std::uint64_t growthWhileWriting(std::string const& path, unsigned int datasets)
{
    std::string const command = std::string(allocatorSettings) + STREAM_DATASETS " " + path + ' ' +
                                std::to_string(datasets) + ' ' + std::to_string(blockSize);
    std::unique_ptr<std::FILE, ClosePipe> const pipe(popen(command.c_str(), "r"));
    std::array<char, 64> line{};
    if (pipe == nullptr || std::fgets(line.data(), line.size(), pipe.get()) == nullptr)
        throw std::runtime_error("the process that writes datasets failed");
    return std::stoull(line.data());
}

class MemoryTest : public testing::Test
{
protected:
    Support::EnvironmentVariable noThreads{"MOXWRITER_THREADS", nullptr};
    Support::DefaultBlockSizeSetting setting{std::to_string(blockSize).c_str()};
    Support::TemporaryFolder folder;
};

} // namespace

/// The host's array, one block, what compression makes of it, and little else.
TEST_F(MemoryTest, DatasetsOfABlockEachNeedLessThanFourBlocks)
{
    constexpr unsigned datasets = 12;
    std::string const path = folder.File("model.mox");
    EXPECT_LT(growthWhileWriting(path, datasets), 4 * blockSize);
    MoxRead::Model const model(path);
    EXPECT_EQ(model.heavyLength(), datasets * blockSize);
    EXPECT_EQ(model.variableCount(), datasets);
}

/// With n of them, the host's array, n + 2 blocks and n + 1 of what compression makes of a block:
/// half of one, and no more than three quarters in the large pages that the system gives. As much
/// as half a block is for the threads themselves, and zlib in each of them.
TEST_F(MemoryTest, TwoThreadsNeedFourBlocksAndThreeCompressedOnes)
{
    Support::EnvironmentVariable const two("MOXWRITER_THREADS", "2");
    EXPECT_LT(growthWhileWriting(folder.File("threads.mox"), 10),
              blockSize + 4 * blockSize + 3 * blockSize * 3 / 4 + blockSize / 2);
}

} // namespace Integration
