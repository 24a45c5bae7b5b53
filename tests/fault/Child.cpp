#include "fault/Child.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace Fault {

Child::Child(std::function<int()> const& action) : id_(::fork())
{
    if (id_ < 0)
        throw std::runtime_error("no process");
    if (id_ != 0)
        return;
    int status = 255;
    try {
        status = action();
    } catch (...) {
        // Must not run the test's own code a second time.
    }
    // Neither what the test has registered for its exit nor what its streams hold is the child's.
    ::_exit(status);
}

Child::~Child()
{
    if (!isOver_)
        wait();
}

void Child::kill() const
{
    ::kill(id_, SIGKILL);
}

std::string Child::wait()
{
    int status = 0;
    ::waitpid(id_, &status, 0);
    isOver_ = true;
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                               : "status " + std::to_string(WEXITSTATUS(status));
}

} // namespace Fault
