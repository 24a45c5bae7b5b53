#include "Handle.h"

#include <mutex>

namespace Zyl2 {
namespace C {

namespace {

/// Making and destroying handles is all that threads share.
std::mutex unusedMutex;
Shell* unused = nullptr;

} // namespace

Shell* Shell::take(Kind kind, void* content)
{
    std::lock_guard<std::mutex> const lock(unusedMutex);
    Shell* const shell = unused == nullptr ? new Shell : unused;
    unused = shell->nextUnused;
    *shell = Shell{kind, content, nullptr};
    return shell;
}

void Shell::giveBack(Shell* shell) noexcept
{
    std::lock_guard<std::mutex> const lock(unusedMutex);
    *shell = Shell{Kind::None, nullptr, unused};
    unused = shell;
}

} // namespace C
} // namespace Zyl2
