#include "Trial.h"

#include "exchange/Error.h"

#include <cerrno>
#include <fstream>
#include <new>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Gmsh {

namespace {

void makeSilent()
{
    rlimit const noCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    int const nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
}

/// What the process has already doesn't count.
void limitMemory(std::uint64_t bytes)
{
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    std::uint64_t const now = pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    rlimit limit = {};
    if (::getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur < now + bytes)
        return;
    limit.rlim_cur = now + bytes;
    ::setrlimit(RLIMIT_AS, &limit);
}

[[noreturn]] void runInChild(std::function<void()> const& function, std::uint64_t bytes)
{
    makeSilent();
    limitMemory(bytes);
    try {
        function();
    } catch (std::bad_alloc const&) {
        ::_exit(1);
    } catch (...) {
        // What is thrown here is thrown again, and told, where the file is read in earnest.
        ::_exit(0);
    }
    ::_exit(0);
}

} // namespace

bool survives(std::function<void()> const& function, std::uint64_t bytes)
{
    pid_t const child = ::fork();
    if (child < 0)
        throw Exchange::Error("There is not enough memory for another process.");
    if (child == 0)
        runInChild(function, bytes);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw Exchange::Error("The process that reads the file on trial was lost.");
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace Gmsh
