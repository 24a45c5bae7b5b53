#include "DumpCommand.h"

#include "CommandLine.h"
#include "DatasetSearch.h"
#include "Parts.h"
#include "mox/print/ComponentNames.h"
#include "mox/print/DatasetPrinter.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonListing.h"
#include "mox/print/JsonWriter.h"
#include "mox/print/OutputFile.h"

#include "common/Progress.h"
#include "moxread/NodePath.h"

#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>

#include <unistd.h>

namespace Mox {

namespace {

std::string formatOf(DumpArguments const& options)
{
    if (!options.format.empty())
        return options.format;
    std::string const ending = std::filesystem::path(options.output).extension().string();
    return ending == ".csv" ? "csv" : ending == ".npy" ? "npy" : "text";
}

/// A dataset with all that a format may tell of it.
class Dump
{
public:
    Dump(DumpArguments const& options, MoxRead::Model& model)
        : options_(options), node_(MoxRead::NodePath(options.node).findGeometry(model)),
          path_(MoxRead::NodePath::of(model, MoxRead::ownerOf(model, node_))),
          variable_(findDataset(model, node_, options.dataset, options.step)),
          dataset_(model.read(variable_)),
          columns_(componentNames(variable_.variableType(), variable_.datasetName()))
    {}

    void write(std::ostream& out, Common::Progress& progress) const
    {
        DatasetPrinter const writer(dataset_, out, progress);
        std::string const format = formatOf(options_);
        if (options_.json)
            writeJson(out, writer);
        else if (format == "npy")
            writer.writeNpy();
        else if (format == "csv")
            writer.writeCsv(columns_);
        else
            writer.writeText();
    }

private:
    void writeJson(std::ostream& out, DatasetPrinter const& writer) const
    {
        bool const isFloat = dataset_.elementType == MoxRead::ElementType::Float;
        JsonWriter json(out);
        json.beginObject().member("file", options_.file);
        json.member("node", node_.id).member("path", path_);
        writeDatasetName(json, variable_);
        json.member("type", variable_.variableType());
        json.member("elementType", isFloat ? "float" : "uint32");
        json.member("rows", dataset_.rows()).member("width", unsigned{dataset_.width});
        json.key("columns").values(columns_);
        json.key("values").beginArray();
        writer.writeJsonRows();
        json.endArray().endObject();
    }

    DumpArguments const& options_;
    MoxRead::Node const& node_;
    std::string path_;
    MoxRead::Variable const& variable_;
    MoxRead::Dataset dataset_;
    std::vector<std::string> columns_;
};

// Where values are printed on a terminal, a bar would stand between them.
int progressStream(DumpArguments const& options)
{
    constexpr int none = -1;
    bool const showsValues = options.output.empty() && ::isatty(STDOUT_FILENO) == 1;
    return showsValues ? none : STDERR_FILENO;
}

void writeFile(Dump const& dump, DumpArguments const& options, Common::Progress& progress)
{
    OutputFile file(options.output, options.overwrite);
    dump.write(file.stream(), progress);
    file.finish();
}

void dumpTo(std::ostream& out, DumpArguments const& options)
{
    // The bar begins before the dataset is read, which may take as long as printing it.
    Common::Progress progress("dump " + options.file, progressStream(options));
    MoxRead::Model model(options.file, options.reading);
    Dump const dump(options, model);
    if (options.output.empty())
        dump.write(out, progress);
    else
        inFile(options.output, [&] { writeFile(dump, options, progress); });
}

void refuseBytesOnATerminal(DumpArguments const& options)
{
    bool const isNpy = !options.json && formatOf(options) == "npy";
    if (isNpy && options.output.empty() && ::isatty(STDOUT_FILENO) == 1)
        throw UsageError("npy is not for a terminal: name a file with -o");
}

// Several arrays in one stream could not be told apart.
void refuseArraysInARow(DumpArguments const& options)
{
    if (options.parts && options.output.empty() && formatOf(options) == "npy")
        throw UsageError("npy of several files needs a name for them: -o");
}

int dumpParts(DumpArguments const& options, std::ostream& out, std::ostream& err)
{
    return forEachPart(options.file, err, [&](Part const& part) {
        DumpArguments own = options;
        own.file = part.path;
        own.parts = false;
        if (options.output.empty())
            out << part.path << ":\n";
        else
            own.output = part.outputFor(options.output);
        return dumpDataset(own, out, err);
    });
}

} // namespace

void addDumpCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<DumpArguments>();
    SubCommand command = commandLine.addCommand("dump", "Write out the values of one dataset");
    command.add("FILE", options->file, "Model file, or index of a partitioned model").required();
    command
        .add("PATH", options->node,
             "Shape with the dataset: names from the root down, joined by /, or #ID")
        .required();
    command.add("DATASET", options->dataset, "Name of the dataset").required();
    command.add("--step", options->step, "Step of the dataset, if it belongs to one")
        .placeholder("STEP");
    Argument const format =
        command.add("--format", options->format, "Unless given, the ending of OUT tells it")
            .placeholder("text|csv|npy")
            .oneOf({"text", "csv", "npy"});
    Argument const parts =
        command.addFlag("--parts", options->parts,
                        "Write that of each file of an index, with -o into files of their own");
    command.addFlag("--json", options->json, "Write JSON").excludes(format).excludes(parts);
    Argument const output =
        command.add("-o,--output", options->output, "File to write to").placeholder("OUT");
    command.addFlag("--overwrite", options->overwrite, "Replace OUT if it exists").needs(output);
    command.addThreads(options->reading.threads);
    command.explain(
        "Example:\n  mox dump beam.mox Beam/Steel Displacement --step \"Load 1\" -o u.csv");
    command.run([options] {
        refuseBytesOnATerminal(*options);
        refuseArraysInARow(*options);
        return dumpDataset(*options, std::cout, std::cerr);
    });
}

int dumpDataset(DumpArguments const& options, std::ostream& out, std::ostream& err)
{
    if (options.parts && MoxRead::PartitionIndex::isIndex(options.file))
        return dumpParts(options, out, err);
    return runOnFile(options.file, err, [&] { dumpTo(out, options); });
}

} // namespace Mox
