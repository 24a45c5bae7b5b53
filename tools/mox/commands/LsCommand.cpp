#include "LsCommand.h"

#include "CommandLine.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonListing.h"
#include "mox/print/Listing.h"
#include "mox/print/ModelContents.h"
#include "mox/print/PartListing.h"
#include "mox/print/UnfinishedFile.h"

#include "moxread/NodePath.h"
#include "moxread/PartitionIndex.h"

#include <iostream>
#include <memory>

namespace Mox {

namespace {

void list(MoxRead::Model& model, std::string const* state, LsArguments const& options,
          std::ostream& out)
{
    MoxRead::Node const& first =
        options.node ? MoxRead::NodePath(*options.node).find(model) : model.node(1);
    Common::Progress progress("ls " + options.file);
    ModelContents const contents(model, first, progress);
    progress.wipe();
    if (options.json)
        JsonListing(contents, options.file, state).print(out);
    else
        Listing(contents, state).print(out);
}

void listWhole(LsArguments const& options, std::ostream& out)
{
    MoxRead::Model model(options.file);
    list(model, nullptr, options, out);
}

void listUnfinished(UnfinishedFile const& file, LsArguments const& options, std::ostream& out)
{
    MoxRead::ReadOptions how;
    how.isOutline = true;
    MoxRead::Model model(file.outline, how);
    list(model, &file.state, options, out);
}

} // namespace

void addLsCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<LsArguments>();
    SubCommand command = commandLine.addCommand("ls", "List what is in a model file");
    command.add("FILE", options->file, "Model file, or index of a partitioned model").required();
    command.add("PATH", options->node,
                "Node to begin with: names from the root down, joined by /, or #ID");
    command.addFlag("--parts", options->parts, "List the files of an index");
    command.addFlag("--json", options->json, "Print JSON");
    command.explain("Example:\n  mox ls beam.mox Beam/Steel");
    command.run([options] { return listFile(*options, std::cout, std::cerr); });
}

int listFile(LsArguments const& options, std::ostream& out, std::ostream& err)
{
    return runOnFile(options.file, err, [&] {
        if (options.parts && MoxRead::PartitionIndex::isIndex(options.file))
            listParts(options.file, options.json, out);
        else
            onWholeOrUnfinished(
                options.file, [&] { listWhole(options, out); },
                [&](UnfinishedFile const& file) { listUnfinished(file, options, out); });
    });
}

int listFile(std::string const& path, std::ostream& out, std::ostream& err)
{
    LsArguments options;
    options.file = path;
    return listFile(options, out, err);
}

} // namespace Mox
