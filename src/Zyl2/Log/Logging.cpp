#include <Zyl2/Log/Logging.h>

namespace Zyl2 {
namespace Log {

Record<char>::Record(char const* source, char const* signature, unsigned long lineNumber,
                     Severity::Severity weight)
    : severity(weight), file(source), function(signature), line(lineNumber),
      time(std::time(nullptr))
{}

Record<char>::~Record() = default;

LogSystem::~LogSystem() = default;

void LogSystem::operator+=(std::ostream const& /*text*/) {}

void LogSystem::operator+=(Record<char> const& /*record*/) {}

} // namespace Log
} // namespace Zyl2
