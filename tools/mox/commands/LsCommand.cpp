#include "LsCommand.h"

#include "CommandLine.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonListing.h"
#include "mox/print/Listing.h"
#include "mox/print/ModelContents.h"
#include "mox/print/PartListing.h"

#include "moxread/NodePath.h"
#include "moxread/PartitionIndex.h"

#include <iostream>
#include <memory>

namespace Mox {

namespace {

void list(LsArguments const& options, std::ostream& out)
{
    MoxRead::Model model(options.file);
    MoxRead::Node const& first =
        options.node ? MoxRead::NodePath(*options.node).find(model) : model.node(1);
    Common::Progress progress("ls " + options.file);
    ModelContents const contents(model, first, progress);
    progress.wipe();
    if (options.json)
        JsonListing(contents, options.file).print(out);
    else
        Listing(contents).print(out);
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
            list(options, out);
    });
}

int listFile(std::string const& path, std::ostream& out, std::ostream& err)
{
    LsArguments options;
    options.file = path;
    return listFile(options, out, err);
}

} // namespace Mox
