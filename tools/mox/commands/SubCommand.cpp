#include "SubCommand.h"

#include <CLI/CLI.hpp>

namespace Mox {

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
