#include <Zyl2/Log/StandardErrorLog.h>

#include <cstdio>
#include <string>

namespace Zyl2 {
namespace Log {

namespace {

char const* nameOf(Severity::Severity severity)
{
    switch (severity) {
    case Severity::Debug:
        return "debug";
    case Severity::Info:
        return "info";
    case Severity::Error:
        return "error";
    case Severity::Warning:
        break;
    }
    return "warning";
}

/// One call of the stream's, so that lines of several threads stay apart.
void print(Severity::Severity severity, std::string const& text)
{
    std::string const line = std::string("moxwriter: ") + nameOf(severity) + ": " + text + '\n';
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

} // namespace

StandardErrorLog::StandardErrorLog(Severity::Severity least) : least_(least) {}

StandardErrorLog::~StandardErrorLog() = default;

void StandardErrorLog::operator+=(std::ostream const& text)
{
    if (auto const* const record = dynamic_cast<Record<char> const*>(&text))
        *this += *record;
}

void StandardErrorLog::operator+=(Record<char> const& record)
{
    if (record.severity >= least_)
        print(record.severity, record.str());
}

} // namespace Log
} // namespace Zyl2
