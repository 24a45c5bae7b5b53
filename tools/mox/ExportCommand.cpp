#include "ExportCommand.h"

#include "CommandLine.h"
#include "RunWithLibraries.h"
#include "ViewerOutput.h"
#include "common/Progress.h"

#include <iostream>
#include <memory>

namespace {

struct Arguments
{
    std::string input;
    std::string output;
    VtkExport::ExportOptions options;
    bool asJson = false;
};

std::string complaintAboutTarget(std::string const& path)
{
    return VtkExport::isExportTarget(path) ? "" : path + " does not end with .vtu, .vtm or .pvd";
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

/// The bar is gone when this returns, before anything else is said.
VtkExport::ExportSummary exportWithProgress(std::string const& input, std::string const& output,
                                            VtkExport::ExportOptions options)
{
    Common::Progress progress("export " + input);
    options.progress = [&progress](std::size_t done, std::size_t all) { progress.show(done, all); };
    return VtkExport::exportModel(input, output, options);
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
               VtkExport::ExportOptions const& options, bool asJson, std::ostream& out,
               std::ostream& err)
{
    ViewerOutput const target("mox export", output, asJson, out, err);
    return target.make([&] { return exportWithProgress(input, output, options); });
}
