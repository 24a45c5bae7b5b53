#ifndef TESTS_FAULT_CHILD_H
#define TESTS_FAULT_CHILD_H

#include <cstdint>
#include <functional>
#include <string>

#include <sys/types.h>

namespace Fault {

/// How a child ended that was killed, and one whose action returned 0.
constexpr char const* WasKilled = "signal 9";
constexpr char const* HasFinished = "status 0";

/// Where the random numbers of tests begin that kill their children: as MOXWRITER_KILLED_SEED says,
/// or anywhere. It is printed, so that what fails can be had again.
std::uint32_t printedSeed();

/// A process that runs one action, so that the process of the tests survives when it is killed.
class Child
{
public:
    /// Starts the process.
    /// \param action its value is the process's exit status
    explicit Child(std::function<int()> const& action);
    /// Waits for the end, unless `wait` has done so.
    ~Child();
    Child(Child const&) = delete;
    Child& operator=(Child const&) = delete;

    void kill() const;

    /// Waits for the end.
    /// \return "status ..." or "signal ..."
    std::string wait();

private:
    pid_t id_;
    bool isOver_ = false;
};

/// Ends the process as if it had been killed: nothing is destroyed or flushed. In a build that
/// counts which lines are reached, what it has counted is kept, unless its files may not grow: half
/// a file of counts is worse than none, so a process that may be killed must not call it.
[[noreturn]] void leave(int status);

/// Lets a process of its own do something that would get in the way of other tests.
/// \return the action's text, or how the process ended without one
std::string inChild(std::function<std::string()> const& action);

} // namespace Fault

#endif
