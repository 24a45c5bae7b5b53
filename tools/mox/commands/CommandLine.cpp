#include "CommandLine.h"

#include <CLI/CLI.hpp>

namespace Mox {

namespace {

constexpr int wrongUsage = 2;

std::string usageMessage(CLI::App const* app, CLI::Error const& error)
{
    return app->get_name() + ": " + error.what() + "; see " + app->get_name() + " --help\n";
}

// CLI11's own check would call an unknown command a missing one.
void requireCommand(CLI::App const& app)
{
    if (app.get_subcommands().empty())
        throw CLI::RequiredError("A command");
}

} // namespace

CommandLine::CommandLine(std::string const& name, std::string const& description)
    : app_(std::make_unique<CLI::App>(description, name))
{
    app_->failure_message(usageMessage);
    app_->require_subcommand(0, 1);
    app_->callback([this] { requireCommand(*app_); });
}

CommandLine::~CommandLine() = default;

void CommandLine::setVersion(std::string const& version)
{
    app_->set_version_flag("--version", app_->get_name() + " " + version,
                           "Print the version and exit");
}

SubCommand CommandLine::addCommand(std::string const& name, std::string const& description)
{
    return SubCommand(*app_->add_subcommand(name, description), exitStatus_);
}

int CommandLine::run(int argc, char** argv)
{
    try {
        app_->parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app_->exit(error) == 0 ? 0 : wrongUsage;
    }
    return exitStatus_;
}

} // namespace Mox
