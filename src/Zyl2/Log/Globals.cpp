#include "Zyl2/Log/Statement.h"

#include <atomic>

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

LogSystem& orSilent(LogSystem* logSystem)
{
    return logSystem == nullptr ? silentLogSystem() : *logSystem;
}

} // namespace

bool hasLogSystem()
{
    LogSystem const* const logSystem = installedLogSystem().load(std::memory_order_acquire);
    return logSystem != nullptr && logSystem != &silentLogSystem();
}

LogSystem& activeLogSystem()
{
    return orSilent(installedLogSystem().load(std::memory_order_acquire));
}

LogSystem* setActiveLogSystem(LogSystem* logSystem)
{
    return &orSilent(installedLogSystem().exchange(logSystem, std::memory_order_acq_rel));
}

} // namespace Log
} // namespace Zyl2
