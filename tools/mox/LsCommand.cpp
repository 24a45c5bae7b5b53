#include "LsCommand.h"

#include "FileCommand.h"
#include "Listing.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

void addLsCommand(CLI::App& app, int& exitStatus)
{
    auto const path = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("ls", "List what is in a model file");
    command->add_option("FILE", *path, "Model file")->required();
    command->callback([&exitStatus, path] { exitStatus = listFile(*path, std::cout, std::cerr); });
}

int listFile(std::string const& path, std::ostream& out, std::ostream& err)
{
    return runOnFile(path, err, [&] {
        MoxRead::Model model(path);
        Listing(model).print(out);
    });
}
