// In a build that counts which lines are reached, what a process has counted would be lost with it
// when it aborts, as it does where a test looks whether it does.

#include <csignal>

// The compiler's header declares it for C alone.
extern "C" void __gcov_dump(); // NOLINT(bugprone-reserved-identifier)

namespace {

// `abort` goes on when this returns.
auto const previous = std::signal(SIGABRT, [](int /*signal*/) { __gcov_dump(); });

} // namespace
