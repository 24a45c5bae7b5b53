#include "LogCapture.h"
#include "TemporaryFile.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Wvf/WvFile.h"
#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using namespace Zyl2::Log;

TEST(Logging, SavingAFilePrintsNothingWithTheBuiltInLogSystem)
{
    Support::TemporaryFolder folder;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        Zyl2Wvf::WvFile file;
        file.OpenFileForWriting(folder.File("a.mox"), false);
        file.WriteHeader();
        file.GetIndex().Put("Key", 7);
        file.GetIndex().WriteAllBuffersToFileStream(file.GetStream());
        file.CloseFile();
    }
    std::string const out = testing::internal::GetCapturedStdout();
    std::string const err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "");
    EXPECT_EQ(Support::ReadFile(folder.File("a.mox")).size(), 2804U);
}

TEST(Logging, ARecordCarriesTheSecondOfItsMakingWheneverItIsHandedOver)
{
    Support::LogCapture capture;
    std::time_t const before = std::time(nullptr);
    Record<char> record("Zyl2/Some/Source", "f()", 1, Severity::Info);
    std::time_t const after = std::time(nullptr);
    EXPECT_LE(before, record.time);
    EXPECT_LE(record.time, after);

    std::time_t const made = record.time;
    while (std::time(nullptr) == made)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    activeLogSystem() += static_cast<std::ostream const&>(record);
    ASSERT_EQ(capture.entries.size(), 1U);
    EXPECT_EQ(capture.entries[0].time, made);
}

TEST(Logging, ARecordKnowsWhereItWasMadeAndTakesTextByInsertion)
{
    Record<char> record("Zyl2/Some/Source", "void f(int)", 12, Severity::Warning);
    record << "Buffer " << 3 << ' ' << 1.5;
    EXPECT_EQ(record.str(), "Buffer 3 1.5");
    EXPECT_EQ(std::string(record.file), "Zyl2/Some/Source");
    EXPECT_EQ(std::string(record.function), "void f(int)");
    EXPECT_EQ(record.line, 12UL);
    EXPECT_EQ(record.severity, Severity::Warning);
    EXPECT_TRUE((std::is_base_of<std::ostringstream, Record<char>>::value));
}

TEST(Logging, AStatementJoinsItsPiecesAndCarriesSeverityOne)
{
    Support::LogCapture capture;
    write("Zyl2/Some/Source", "void f(int)", 34, "Writing buffer ", std::size_t(5), " to stream.");
    ASSERT_EQ(capture.entries.size(), 1U);
    EXPECT_EQ(capture.entries[0].text, "Writing buffer 5 to stream.");
    EXPECT_EQ(capture.entries[0].file, "Zyl2/Some/Source");
    EXPECT_EQ(capture.entries[0].function, "void f(int)");
    EXPECT_EQ(capture.entries[0].line, 34UL);
    EXPECT_EQ(capture.entries[0].severity, 1);
}

TEST(Logging, SettingALogSystemReturnsThePreviousOneAndNullRestoresTheSilentOne)
{
    LogSystem* const silent = &activeLogSystem();
    LogSystem first;
    LogSystem second;
    EXPECT_EQ(setActiveLogSystem(&first), silent);
    EXPECT_EQ(&activeLogSystem(), &first);
    EXPECT_EQ(setActiveLogSystem(&second), &first);
    EXPECT_EQ(setActiveLogSystem(nullptr), &second);
    EXPECT_EQ(&activeLogSystem(), silent);
    EXPECT_EQ(setActiveLogSystem(silent), silent);
}

TEST(Logging, TheBuiltInLogSystemDiscardsBothForms)
{
    LogSystem builtIn;
    Record<char> record("Zyl2/Some/Source", "f()", 1, Severity::Info);
    record << "text";
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    builtIn += record;
    builtIn += static_cast<std::ostream const&>(record);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(record.str(), "text");
}

TEST(Logging, WarningsAreShownWhereTheEnvironmentAsksForThem)
{
    // It is asked once, here by a process of its own.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Support::EnvironmentVariable const asked("MOXWRITER_WARNINGS", "1");
    auto const warnAndLeave = [] {
        warn("Zyl2/Some/Source", "f()", 1, "Node ", 7, " is empty");
        std::exit(0);
    };
    EXPECT_EXIT(warnAndLeave(), testing::ExitedWithCode(0),
                "^moxwriter: warning: Node 7 is empty\n$");
}

} // namespace
