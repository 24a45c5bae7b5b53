#include "fault/Child.h"

#include "support/Wanted.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef COUNTED
// The compiler's header declares it for C alone.
extern "C" void __gcov_dump(); // NOLINT(bugprone-reserved-identifier)
#endif

namespace Fault {

std::uint32_t printedSeed()
{
    std::uint32_t const seed = Support::wanted("MOXWRITER_KILLED_SEED", std::random_device()());
    std::cout << "first seed: " << seed << '\n';
    return seed;
}

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
        // An exception that left this function would run the rest of the test in the child as well.
    }
    // `exit` would run the handlers and flush the buffers that the child has copies of.
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

void leave(int status)
{
#ifdef COUNTED
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    if (limit.rlim_cur == RLIM_INFINITY)
        __gcov_dump();
#endif
    ::_exit(status);
}

std::string inChild(std::function<std::string()> const& action)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    Child child([&]() -> int {
        std::string const text = action();
        leave(::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0
                                                                                              : 1);
    });
    ::close(ends[1]);
    std::string text;
    std::array<char, 256> piece{};
    for (ssize_t got = 1; got > 0; text.append(piece.data(), static_cast<std::size_t>(got)))
        got = std::max<ssize_t>(::read(ends[0], piece.data(), piece.size()), 0);
    ::close(ends[0]);
    std::string const ending = child.wait();
    return ending == "status 0" ? text : ending;
}

} // namespace Fault
