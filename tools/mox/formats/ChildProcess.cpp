#include "ChildProcess.h"

#include <common/EndingSignals.h>
#include <common/SignalsHeld.h>
#include <common/TemporaryPath.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <system_error>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Mox {

namespace {

constexpr int failedStatus = 1;

/// A crash that is expected needs no image of the process on the disk.
void leaveNoCore()
{
    rlimit const none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

/// The child must not outlive the parent: nobody would wait for it, and a reader may never end.
void dieWith(pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A parent that ended before the call above sends no signal any more.
    if (::getppid() != parent)
        std::_Exit(failedStatus);
}

[[noreturn]] void runAndExit(std::function<int()> const& action)
{
    leaveNoCore();
    // A file that may not grow is told like any other failed write.
    std::signal(SIGXFSZ, SIG_IGN);
    int status = failedStatus;
    try {
        status = action();
        if (!std::cout.flush()) {
            std::cerr << "mox: the output cannot be written\n";
            status = failedStatus;
        }
    } catch (std::exception const& error) {
        std::cerr << "mox: " << error.what() << '\n';
    }
    std::cerr.flush();
    // The parent's files and objects are not the child's to close.
    std::_Exit(status);
}

/// In the child, 0. A signal that comes meanwhile is for both, or for neither.
pid_t startChild()
{
    Common::SignalsHeld const held;
    pid_t const parent = ::getpid();
    pid_t const id = ::fork();
    if (id < 0)
        throw std::system_error(errno, std::generic_category(), "no process can be started");
    Common::endTogetherWith(id);
    if (id == 0) {
        Common::TemporaryPath::forgetAll();
        dieWith(parent);
    }
    return id;
}

/// The child's id is no longer ours when its end was told, so that no signal may go there.
int waitFor(pid_t id)
{
    siginfo_t ignored;
    while (::waitid(P_PID, static_cast<id_t>(id), &ignored, WEXITED | WNOWAIT) < 0)
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "a process got lost");
    Common::SignalsHeld const held;
    Common::endTogetherWith(0);
    int status = 0;
    if (::waitpid(id, &status, 0) < 0)
        throw std::system_error(errno, std::generic_category(), "a process got lost");
    return status;
}

} // namespace

ChildResult runInChild(std::function<int()> const& action)
{
    std::cout.flush();
    std::cerr.flush();
    pid_t const id = startChild();
    if (id == 0)
        runAndExit(action);
    int const status = waitFor(id);
    if (WIFEXITED(status))
        return {id, WEXITSTATUS(status), 0};
    return {id, std::nullopt, WTERMSIG(status)};
}

} // namespace Mox
