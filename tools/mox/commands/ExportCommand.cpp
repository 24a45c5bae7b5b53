#include "ExportCommand.h"

#include "CommandLine.h"
#include "Parts.h"
#include "ViewerOutput.h"
#include "mox/formats/Libraries.h"

#include <filesystem>
#include <iostream>
#include <memory>

namespace Mox {

namespace {

std::string complaintAboutExport(std::string const& path)
{
    std::string const ending = std::filesystem::path(path).extension().string();
    bool const isTarget = ending == ".vtu" || ending == ".vtm" || ending == ".pvd";
    return isTarget ? "" : path + " does not end with .vtu, .vtm or .pvd";
}

void addArguments(SubCommand& command, ExportArguments& arguments)
{
    command.add("FILE", arguments.input, "Model file, or index of a partitioned model").required();
    command.add("OUT", arguments.output, "What to make: .vtu, .vtm or .pvd")
        .required()
        .check(complaintAboutExport);
    command.add("--step", arguments.options.step,
                "Write this step only (default: the last; for .pvd, all)");
    command.addFlag("--overwrite", arguments.options.overwrite, "Replace OUT if it exists");
    Argument const parts = command.addFlag("--parts", arguments.parts,
                                           "Make one of each file of an index: OUT with a number");
    command.addFlag("--json", arguments.json, "Say as JSON what was written").excludes(parts);
    command.addThreads(arguments.options.reading.threads);
}

} // namespace

void addExportCommand(CommandLine& commandLine)
{
    auto const arguments = std::make_shared<ExportArguments>();
    SubCommand command = commandLine.addCommand(
        "export", "Write a model as files for viewers that read VTK's formats");
    addArguments(command, *arguments);
    command.explain(
        "All shapes in one grid (.vtu), a block for each shape (.vtm), or all steps as a "
        "collection (.pvd).\nExample:\n  mox export cantilever.mox cantilever.pvd");
    command.run([arguments] {
        return runWithLibrary(Library::Vtk, "mox export",
                              [&] { return exportFile(*arguments, std::cout, std::cerr); });
    });
}

int exportFile(ExportArguments const& arguments, std::ostream& out, std::ostream& err)
{
    if (arguments.parts && MoxRead::PartitionIndex::isIndex(arguments.input))
        return forEachPart(arguments.input, err, [&](Part const& part) {
            ExportArguments own = arguments;
            own.input = part.path;
            own.output = part.outputFor(arguments.output);
            return exportFile(own, out, err);
        });
    ViewerOutput const target("export", arguments.output, arguments.json, out, err);
    return target.make(arguments.input, arguments.options, exportWithVtk);
}

} // namespace Mox
