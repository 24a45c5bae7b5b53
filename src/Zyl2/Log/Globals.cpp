#include "Zyl2/Log/Statement.h"

#include <Zyl2/Log/StandardErrorLog.h>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace Zyl2 {
namespace Log {

namespace {

LogSystem& silentLogSystem()
{
    static LogSystem silent;
    return silent;
}

std::atomic<LogSystem*>& installedLogSystem()
{
    static std::atomic<LogSystem*> installed(nullptr);
    return installed;
}

/// Hosts in C, Fortran and Python have no log systems; this shows their warnings, too. It is never
/// destroyed: models may live until the process ends.
LogSystem& standardErrorLog()
{
    static auto* const log = new StandardErrorLog;
    return *log;
}

/// What is active as long as no host has set another.
LogSystem& defaultLogSystem()
{
    static bool const isAskedFor = [] {
        char const* const text = std::getenv("MOXWRITER_WARNINGS");
        return text != nullptr && std::string_view(text) == "1";
    }();
    return isAskedFor ? standardErrorLog() : silentLogSystem();
}

LogSystem& orDefault(LogSystem* logSystem)
{
    return logSystem == nullptr ? defaultLogSystem() : *logSystem;
}

} // namespace

bool hasLogSystem()
{
    return &activeLogSystem() != &silentLogSystem();
}

LogSystem& activeLogSystem()
{
    return orDefault(installedLogSystem().load(std::memory_order_acquire));
}

LogSystem* setActiveLogSystem(LogSystem* logSystem)
{
    return &orDefault(installedLogSystem().exchange(logSystem, std::memory_order_acq_rel));
}

} // namespace Log
} // namespace Zyl2
