#include "SubCommand.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <system_error>

namespace Mox {

namespace {

constexpr unsigned int mostThreads = 1024;

std::string refuseUnlessThreadCount(std::string const& text)
{
    unsigned int count = 0;
    char const* const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, count);
    bool const isCount = error == std::errc() && rest == end && count <= mostThreads &&
                         text == std::to_string(count);
    return isCount ? ""
                   : text + " is no number of threads from 0 to " + std::to_string(mostThreads);
}

} // namespace

Argument SubCommand::add(std::string const& name, std::string& value,
                         std::string const& description)
{
    return Argument(*command_->add_option(name, value, description));
}

Argument SubCommand::add(std::string const& name, std::optional<std::string>& value,
                         std::string const& description)
{
    return Argument(*command_->add_option(name, value, description));
}

Argument SubCommand::add(std::string const& name, std::vector<std::string>& values,
                         std::string const& description)
{
    return Argument(*command_->add_option(name, values, description));
}

Argument SubCommand::add(std::string const& name, double& value, std::string const& description)
{
    return Argument(*command_->add_option(name, value, description));
}

Argument SubCommand::add(std::string const& name, std::optional<double>& value,
                         std::string const& description)
{
    return Argument(*command_->add_option(name, value, description));
}

Argument SubCommand::addFlag(std::string const& name, bool& value, std::string const& description)
{
    return Argument(*command_->add_flag(name, value, description));
}

Argument SubCommand::addThreads(unsigned int& threads)
{
    Argument argument(*command_->add_option(
        "--threads", threads, "Threads that inflate values ahead (default: 0, none is started)"));
    argument.placeholder("N").check(refuseUnlessThreadCount);
    return argument;
}

void SubCommand::explain(std::string const& text)
{
    command_->footer(text);
}

void SubCommand::run(std::function<int()> const& action)
{
    command_->callback([action, exitStatus = exitStatus_] {
        try {
            *exitStatus = action();
        } catch (UsageError const& error) {
            throw CLI::ValidationError(error.what());
        }
    });
}

} // namespace Mox
