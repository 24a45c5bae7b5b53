#include <Zyl2/Log/LoggerBase.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

using namespace Zyl2::Log;

class CountingLogger : public LoggerBase
{
public:
    LoggerBase& logRecord(char const* /*file*/, char const* /*function*/, unsigned long /*line*/,
                          Severity::Severity /*severity*/) override
    {
        ++records;
        return *this;
    }

    void operator+=(std::ostream const& /*text*/) override { ++texts; }

    int records = 0;
    int texts = 0;
};

TEST(LoggerBase, StartingARecordReturnsTheLoggerItself)
{
    LoggerBase logger;
    EXPECT_EQ(&logger.logRecord("Zyl2/Some/Source", "f()", 1, Severity::Info), &logger);
    logger += std::ostringstream();
}

TEST(LoggerBase, CopyingAndAssigningTheBaseLeavesTheRestAlone)
{
    CountingLogger source;
    source.records = 3;
    CountingLogger target;
    target.records = 5;
    LoggerBase& targetBase = target;
    LoggerBase const& sourceBase = source;
    EXPECT_EQ(&(targetBase = sourceBase), &targetBase);
    EXPECT_EQ(target.records, 5);
    LoggerBase copy(sourceBase);
    EXPECT_EQ(&copy.logRecord("Zyl2/Some/Source", "f()", 1, Severity::Info), &copy);
    EXPECT_EQ(source.records, 3);
}

} // namespace
