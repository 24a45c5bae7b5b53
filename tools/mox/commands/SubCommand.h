#ifndef MOX_COMMANDS_SUBCOMMAND_H
#define MOX_COMMANDS_SUBCOMMAND_H

#include "Argument.h"

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Mox {

/// What is wrong with how a command was called, found by the command itself.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A command, as it was added to the command line. Where its values are put has to be there when it
/// runs.
class SubCommand
{
public:
    /// \param exitStatus where the action's result is put
    SubCommand(CLI::App& command, int& exitStatus) : command_(&command), exitStatus_(&exitStatus) {}

    /// Adds an argument: an option if the name begins with a dash, else the next one by position.
    Argument add(std::string const& name, std::string& value, std::string const& description);
    Argument add(std::string const& name, std::optional<std::string>& value,
                 std::string const& description);
    Argument add(std::string const& name, std::vector<std::string>& values,
                 std::string const& description);
    Argument add(std::string const& name, double& value, std::string const& description);
    Argument add(std::string const& name, std::optional<double>& value,
                 std::string const& description);
    /// Adds an option without a value.
    Argument addFlag(std::string const& name, bool& value, std::string const& description);

    /// Adds --threads: how many the reader may start.
    Argument addThreads(unsigned int& threads);

    /// What stands below the arguments in the help.
    void explain(std::string const& text);

    /// What the command does; it returns the exit status, and may throw `UsageError`.
    void run(std::function<int()> const& action);

private:
    CLI::App* command_;
    int* exitStatus_;
};

} // namespace Mox

#endif
