#include "ExportCommand.h"

#include "CommandLine.h"
#include "ViewerOutput.h"
#include "mox/formats/RunWithLibraries.h"

#include <iostream>
#include <memory>

namespace {

struct Arguments
{
    std::string input;
    std::string output;
    Export::ExportOptions options;
    bool asJson = false;
};

std::string complaintAboutTarget(std::string const& path)
{
    return Export::isExportTarget(path) ? "" : path + " does not end with .vtu, .vtm or .pvd";
}

void addArguments(SubCommand& command, Arguments& arguments)
{
    command.add("FILE", arguments.input, "Model file").required();
    command.add("OUT", arguments.output, "What to make: .vtu, .vtm or .pvd")
        .required()
        .check(complaintAboutTarget);
    command.add("--step", arguments.options.step,
                "Write this step only (default: the last; for .pvd, all)");
    command.addFlag("--overwrite", arguments.options.overwrite, "Replace OUT if it exists");
    command.addFlag("--json", arguments.asJson, "Say as JSON what was written");
}

} // namespace

void addExportCommand(CommandLine& commandLine)
{
    auto const arguments = std::make_shared<Arguments>();
    SubCommand command = commandLine.addCommand(
        "export", "Write a model as files for viewers that read VTK's formats");
    addArguments(command, *arguments);
    command.explain(
        "All shapes in one grid (.vtu), a block for each shape (.vtm), or all steps as a "
        "collection (.pvd).\nExample:\n  mox export cantilever.mox cantilever.pvd");
    command.run([arguments] {
        return runWithLibraries("mox export", [&] {
            return exportFile(arguments->input, arguments->output, arguments->options,
                              arguments->asJson, std::cout, std::cerr);
        });
    });
}

int exportFile(std::string const& input, std::string const& output,
               Export::ExportOptions const& options, bool asJson, std::ostream& out,
               std::ostream& err)
{
    ViewerOutput const target("export", output, asJson, out, err);
    return target.make(input, options, Export::exportModel);
}
