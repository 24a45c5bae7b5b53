#include <Zyl2/Log/LoggerBase.h>

namespace Zyl2 {
namespace Log {

LoggerBase::LoggerBase() = default;

LoggerBase::LoggerBase(LoggerBase const& /*other*/) {}

LoggerBase& LoggerBase::operator=(LoggerBase const& /*other*/) // NOLINT: nothing is copied
{
    return *this;
}

LoggerBase::~LoggerBase() = default;

LoggerBase& LoggerBase::logRecord(char const* /*file*/, char const* /*function*/,
                                  unsigned long /*line*/, Severity::Severity /*severity*/)
{
    return *this;
}

void LoggerBase::operator+=(std::ostream const& /*text*/) {}

} // namespace Log
} // namespace Zyl2
