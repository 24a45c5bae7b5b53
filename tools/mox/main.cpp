#include "DiffCommand.h"
#include "DumpCommand.h"
#include "ExportCommand.h"
#include "InfoCommand.h"
#include "LsCommand.h"
#include "TranslateCommand.h"
#include "VerifyCommand.h"
#include "ViewCommand.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr int failure = 1;
constexpr int wrongUsage = 2;

std::string usageMessage(CLI::App const* /*app*/, const CLI::Error& error)
{
    return "mox: " + std::string(error.what()) + "; see mox --help\n";
}

// CLI11's own check would call an unknown command a missing one.
void requireCommand(CLI::App const& app)
{
    if (app.get_subcommands().empty())
        throw CLI::RequiredError("A command");
}

// A reader that went away and a file that may not grow are told like any other failed write.
void takeFailedWritesAsErrors()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

int run(int argc, char** argv)
{
    CLI::App app("Looks into model files and makes them", "mox");
    app.failure_message(usageMessage);
    int exitStatus = 0;
    addTranslateCommand(app, exitStatus);
    addVerifyCommand(app, exitStatus);
    addLsCommand(app, exitStatus);
    addExportCommand(app, exitStatus);
    addViewCommand(app, exitStatus);
    addInfoCommand(app, exitStatus);
    addDumpCommand(app, exitStatus);
    addDiffCommand(app, exitStatus);
    app.require_subcommand(0, 1);
    app.callback([&app] { requireCommand(app); });
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : wrongUsage;
    }
    if (!std::cout.flush()) {
        std::cerr << "mox: the output cannot be written\n";
        return failure;
    }
    return exitStatus;
}

} // namespace

int main(int argc, char** argv)
{
    takeFailedWritesAsErrors();
    try {
        return run(argc, argv);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "mox: %s\n", error.what());
        return failure;
    }
}
