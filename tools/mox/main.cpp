#include "LsCommand.h"
#include "TranslateCommand.h"
#include "VerifyCommand.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>

namespace {

constexpr int failure = 1;
constexpr int wrongUsage = 2;

int run(int argc, char** argv)
{
    CLI::App app("Looks into model files and makes them");
    int exitStatus = 0;
    addTranslateCommand(app, exitStatus);
    addVerifyCommand(app, exitStatus);
    addLsCommand(app, exitStatus);
    app.require_subcommand(1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
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
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mox: %s\n", error.what());
        return failure;
    }
}
