#include "CommandLine.h"
#include "DiffCommand.h"
#include "DumpCommand.h"
#include "ExportCommand.h"
#include "InfoCommand.h"
#include "LsCommand.h"
#include "TranslateCommand.h"
#include "VerifyCommand.h"
#include "ViewCommand.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

namespace {

constexpr int failure = 1;

// A reader that went away and a file that may not grow are told like any other failed write.
void takeFailedWritesAsErrors()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

int run(int argc, char** argv)
{
    CommandLine commandLine("mox", "Looks into model files and makes them");
    addTranslateCommand(commandLine);
    addVerifyCommand(commandLine);
    addLsCommand(commandLine);
    addExportCommand(commandLine);
    addViewCommand(commandLine);
    addInfoCommand(commandLine);
    addDumpCommand(commandLine);
    addDiffCommand(commandLine);
    int const exitStatus = commandLine.run(argc, argv);
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
