#include "common/EndingSignals.h"
#include "mox/commands/CheckCommand.h"
#include "mox/commands/CommandLine.h"
#include "mox/commands/DiffCommand.h"
#include "mox/commands/DumpCommand.h"
#include "mox/commands/ExportCommand.h"
#include "mox/commands/InfoCommand.h"
#include "mox/commands/JoinCommand.h"
#include "mox/commands/LsCommand.h"
#include "mox/commands/RecoverCommand.h"
#include "mox/commands/TranslateCommand.h"
#include "mox/commands/UnfinishedRun.h"
#include "mox/commands/VerifyCommand.h"
#include "mox/commands/ViewCommand.h"
#include "mox/print/FileError.h"
#include "mox/print/UnfinishedFile.h"

#include <Zyl2/Version.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

namespace Mox {

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
    adviseOnIncompleteFiles(adviceOnRun);
    lookForUnfinishedFiles(findUnfinishedRun);
    CommandLine commandLine("mox", "Looks into model files and makes them");
    commandLine.setVersion(Zyl2::versionString());
    addTranslateCommand(commandLine);
    addVerifyCommand(commandLine);
    addCheckCommand(commandLine);
    addLsCommand(commandLine);
    addExportCommand(commandLine);
    addViewCommand(commandLine);
    addInfoCommand(commandLine);
    addDumpCommand(commandLine);
    addDiffCommand(commandLine);
    addJoinCommand(commandLine);
    addRecoverCommand(commandLine);
    int const exitStatus = commandLine.run(argc, argv);
    if (!std::cout.flush()) {
        std::cerr << "mox: the output cannot be written\n";
        return failure;
    }
    return exitStatus;
}

} // namespace

} // namespace Mox

int main(int argc, char** argv)
{
    Common::cleanUpBeforeEnding();
    Mox::takeFailedWritesAsErrors();
    try {
        return Mox::run(argc, argv);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "mox: %s\n", error.what());
        return Mox::failure;
    }
}
