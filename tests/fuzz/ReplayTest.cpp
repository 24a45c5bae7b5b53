#include "Inputs.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using Support::contentOf;
using Entry = void (*)(std::uint8_t const*, std::size_t);

std::vector<std::filesystem::path> corpusOf(std::string const& target)
{
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(FUZZ_CORPUS "/" + target))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void replay(std::string const& target, Entry entry)
{
    auto const files = corpusOf(target);
    EXPECT_FALSE(files.empty());
    for (std::filesystem::path const& file : files) {
        SCOPED_TRACE(file.filename().string());
        std::string const bytes = contentOf(file);
        EXPECT_NO_THROW(entry(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size()));
    }
}

TEST(Replay, EveryModelFileGetsAVerdict)
{
    replay("fuzz_reader", Fuzz::readModelFile);
}

TEST(Replay, EveryResultFileGetsAVerdict)
{
    replay("fuzz_frd", Fuzz::readResultFile);
}

TEST(Replay, EveryEnSightCaseGetsAVerdict)
{
    replay("fuzz_ensight", Fuzz::readEnSightCase);
}

TEST(Replay, EveryRecoveryLogGetsAVerdict)
{
    replay("fuzz_log", Fuzz::replayLog);
}

TEST(Replay, EveryModelIsAsItsCallsDemand)
{
    replay("fuzz_model", Fuzz::buildModel);
}

} // namespace
