#include "EndingSignals.h"

#include "SignalsHeld.h"
#include "TemporaryPath.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Common {

namespace {

constexpr int crashes[] = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL};
constexpr int exitStatusOfSignals = 128;

pid_t volatile childToEnd = 0;

void endChild(int signal)
{
    pid_t const child = childToEnd;
    if (child == 0 || ::kill(child, signal) != 0)
        return;
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// When the handler returns, the signal does what it does to everybody.
void endByDefault(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void takeCrash(int signal)
{
    TemporaryPath::removeAll();
    endByDefault(signal);
}

void takeEnding(int signal)
{
    // The first thread is the one that makes files: no other may clean up beside it.
    bool const isFirstThread = ::syscall(SYS_gettid) == ::getpid();
    if (!isFirstThread) {
        ::syscall(SYS_tgkill, ::getpid(), ::getpid(), signal);
        return;
    }
    endChild(signal);
    TemporaryPath::removeAll();
    endByDefault(signal);
}

void take(int signal, void (*handler)(int))
{
    struct sigaction before = {};
    if (::sigaction(signal, nullptr, &before) != 0 || before.sa_handler != SIG_DFL)
        return;
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_mask = endingSignals();
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void cleanUpBeforeEnding()
{
    sigset_t const endings = endingSignals();
    for (int signal = 1; signal < SIGRTMIN; ++signal)
        if (::sigismember(&endings, signal) == 1)
            take(signal, takeEnding);
    for (int const signal : crashes)
        take(signal, takeCrash);
}

void endTogetherWith(pid_t child)
{
    childToEnd = child;
}

void endBy(int signal)
{
    TemporaryPath::removeAll();
    endByDefault(signal);
    // The line above returns only where the signal is ignored.
    std::_Exit(exitStatusOfSignals + signal);
}

} // namespace Common
