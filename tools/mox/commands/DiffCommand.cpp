#include "DiffCommand.h"

#include "CommandLine.h"
#include "Parts.h"
#include "mox/compare/ModelComparison.h"
#include "mox/print/FileError.h"

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>

namespace Mox {

namespace {

void printText(std::ostream& out, std::vector<Difference> const& differences)
{
    for (Difference const& difference : differences)
        out << difference.text() << '\n';
    if (!differences.empty())
        out << differences.size() << (differences.size() == 1 ? " difference\n" : " differences\n");
}

void printJson(std::ostream& out, DiffArguments const& options,
               std::vector<Difference> const& differences)
{
    JsonWriter json(out);
    json.beginObject().member("a", options.left).member("b", options.right);
    json.member("equal", differences.empty()).key("differences").beginArray();
    for (Difference const& difference : differences)
        difference.write(json);
    json.endArray().endObject();
}

int diff(DiffArguments const& options, std::ostream& out)
{
    Common::Progress progress("diff " + options.left);
    MoxRead::ReadOptions ofLeft = options.reading;
    MoxRead::ReadOptions ofRight = options.reading;
    ofRight.threads = options.reading.threads / 2;
    ofLeft.threads -= ofRight.threads;
    NamedModel left(options.left, ofLeft);
    NamedModel right(options.right, ofRight);
    ModelComparison const comparison(left, right, options.tolerance, progress);
    progress.wipe();
    if (options.json)
        printJson(out, options, comparison.differences());
    else
        printText(out, comparison.differences());
    return comparison.differences().empty() ? 0 : 1;
}

int diffParts(DiffArguments const& options, std::ostream& out, std::ostream& err)
{
    return forEachPair(options.left, options.right, err, [&](Part const& left, Part const& right) {
        DiffArguments own = options;
        own.left = left.path;
        own.right = right.path;
        own.parts = false;
        std::ostringstream found;
        int const status = diffFiles(own, found, err);
        if (!found.str().empty())
            out << left.path << " and " << right.path << ":\n" << found.str();
        return status;
    });
}

std::string refuseUnlessBound(std::string const& text)
{
    char* end = nullptr;
    double const value = std::strtod(text.c_str(), &end);
    bool const isNumber = !text.empty() && end == text.c_str() + text.size();
    return isNumber && std::isfinite(value) && value >= 0 ? "" : text + " is no number from 0 on";
}

} // namespace

void addDiffCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<DiffArguments>();
    SubCommand command = commandLine.addCommand("diff", "Tell in what two model files differ");
    command.add("A", options->left, "Model file, or index of a partitioned model").required();
    command.add("B", options->right, "The one to compare it with").required();
    Argument const parts =
        command.addFlag("--parts", options->parts, "Compare the files of two indices one by one");
    command
        .add("--tolerance", options->tolerance.absolute, "Difference up to which floats are equal")
        .placeholder("T")
        .check(refuseUnlessBound);
    command
        .add("--relative", options->tolerance.relative,
             "The same, as a part of the larger of the two")
        .placeholder("R")
        .check(refuseUnlessBound);
    command.addFlag("--json", options->json, "Print JSON").excludes(parts);
    command.addThreads(options->reading.threads);
    command.explain("Example:\n  mox diff before.mox after.mox --relative 1e-5");
    command.run([options] { return diffFiles(*options, std::cout, std::cerr); });
}

int diffFiles(DiffArguments const& options, std::ostream& out, std::ostream& err)
{
    bool const areSets = MoxRead::PartitionIndex::isIndex(options.left) ||
                         MoxRead::PartitionIndex::isIndex(options.right);
    if (options.parts && areSets)
        return diffParts(options, out, err);
    int status = 1;
    int const failure = runOnFile(options.left, err, [&] { status = diff(options, out); });
    return failure == 0 ? status : failure;
}

} // namespace Mox
