#include "TranslateCommand.h"

#include "frd/Translation.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <memory>

namespace {

struct Arguments
{
    std::string input;
    std::string output;
    bool overwrite = false;
};

} // namespace

void addTranslateCommand(CLI::App& app, int& exitStatus)
{
    auto const arguments = std::make_shared<Arguments>();
    CLI::App* const command =
        app.add_subcommand("translate", "Make a model file of a solver's result file (.frd)");
    command->add_option("IN", arguments->input, "Result file, text or binary")->required();
    command->add_option("OUT", arguments->output, "Model file to be made")->required();
    command->add_flag("--overwrite", arguments->overwrite, "Replace OUT if it exists");
    command->callback([&exitStatus, arguments] {
        exitStatus =
            translateFile(arguments->input, arguments->output, arguments->overwrite, std::cerr);
    });
}

int translateFile(std::string const& input, std::string const& output, bool overwrite,
                  std::ostream& err)
{
    Frd::TranslationOptions options;
    options.overwrite = overwrite;
    options.application = "mox translate";
    try {
        Frd::translate(input, output, options);
        return 0;
    } catch (std::exception const& error) {
        err << "mox translate: " << error.what() << '\n';
        return 1;
    }
}
