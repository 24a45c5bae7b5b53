#include "mox/commands/VerifyCommand.h"

#include "mox/Outcome.h"
#include "moxread/Sample.h"
#include "moxread/TestFile.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <sstream>
#include <string>
#include <vector>

using Mox::VerifyArguments;
using Mox::verifyFile;
using Mox::verifyFiles;
using namespace MoxReadTest;

TEST(VerifyCommand, ASoundFileGetsOneLineOfCounts)
{
    const std::string content = Sample().file();
    const TemporaryFile file(content);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(verifyFile(file.path(), out, err), 0);
    EXPECT_EQ(out.str(), file.path() + ": ok (6 blocks, 4 nodes, 3 datasets, " +
                             std::to_string(content.size()) + " bytes)\n");
    EXPECT_EQ(err.str(), "");
}

TEST(VerifyCommand, ABadFileGetsOneLineOnTheErrorStream)
{
    const TemporaryFile file("something else");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(verifyFile(file.path(), out, err), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), file.path() + ": not a mox file: it does not begin with the signature\n");
}

namespace {

Outcome verdictOn(std::vector<std::string> const& files, bool json)
{
    std::ostringstream out;
    std::ostringstream err;
    VerifyArguments options;
    options.files = files;
    options.json = json;
    int const status = verifyFiles(options, out, err);
    return {status, out.str(), err.str()};
}

} // namespace

TEST(VerifyCommand, SeveralFilesGetALineEachAndASummary)
{
    const std::string content = Sample().file();
    const TemporaryFile good(content);
    const TemporaryFile bad("something else");
    const std::string ok = good.path() + ": ok (6 blocks, 4 nodes, 3 datasets, " +
                           std::to_string(content.size()) + " bytes)\n";
    Outcome const mixed = verdictOn({good.path(), bad.path(), good.path()}, false);
    EXPECT_EQ(mixed.status, 1);
    EXPECT_EQ(mixed.out, ok + ok + "3 files, 1 bad\n");
    EXPECT_EQ(mixed.err, bad.path() + ": not a mox file: it does not begin with the signature\n");
    Outcome const sound = verdictOn({good.path(), good.path()}, false);
    EXPECT_EQ(sound.status, 0);
    EXPECT_EQ(sound.out, ok + ok + "2 files, 0 bad\n");
    EXPECT_EQ(sound.err, "");
}

TEST(VerifyCommand, JsonHasAVerdictForEachFile)
{
    const std::string content = Sample().file();
    const TemporaryFile good(content);
    const TemporaryFile cut(content.substr(0, content.size() - 1));
    Outcome const outcome = verdictOn({good.path(), cut.path()}, true);
    EXPECT_EQ(outcome.status, 1);
    nlohmann::json const json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json.at("fileCount"), 2);
    EXPECT_EQ(json.at("badCount"), 1);
    EXPECT_EQ(json.at("files").at(0), nlohmann::json({{"file", good.path()},
                                                      {"ok", true},
                                                      {"blockCount", 6},
                                                      {"nodeCount", 4},
                                                      {"datasetCount", 3},
                                                      {"bytes", content.size()}}));
    EXPECT_EQ(json.at("files").at(1).at("ok"), false);
    EXPECT_EQ(json.at("files").at(1).at("error").get<std::string>() + "\n", outcome.err);
    EXPECT_NE(outcome.err.find(": incomplete: "), std::string::npos);
}
