#include "VerifyCommand.h"

#include "FileCommand.h"

#include "moxread/Verify.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

void addVerifyCommand(CLI::App& app, int& exitStatus)
{
    auto const path = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("verify", "Check every byte of a model file's layout");
    command->add_option("FILE", *path, "Model file")->required();
    command->callback(
        [&exitStatus, path] { exitStatus = verifyFile(*path, std::cout, std::cerr); });
}

int verifyFile(std::string const& path, std::ostream& out, std::ostream& err)
{
    return runOnFile(path, err, [&] {
        const MoxRead::Summary summary = MoxRead::verify(path);
        out << path << ": ok (" << summary.blocks << " blocks, " << summary.nodes << " nodes, "
            << summary.datasets << " datasets, " << summary.bytes << " bytes)\n";
    });
}
