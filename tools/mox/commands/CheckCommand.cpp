#include "CheckCommand.h"

#include "CommandLine.h"
#include "Parts.h"
#include "mox/check/Kinds.h"
#include "mox/check/ModelCheck.h"
#include "mox/print/FileError.h"
#include "mox/print/JsonWriter.h"
#include "mox/print/StepUse.h"

#include "common/Progress.h"
#include "moxread/NodePath.h"
#include "moxread/PartitionIndex.h"
#include "moxread/Text.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace Mox {

using Check::countText;
using Check::Finding;
using Check::Findings;
using Check::Kind;
using Check::Severity;
using MoxRead::quoted;

namespace {

struct CheckedModel
{
    explicit CheckedModel(CheckArguments const& options) : file(options.file), model(options.file)
    {
        Common::Progress progress("check " + file);
        findings = Check::checkModel(
            model, [&](std::uint64_t done, std::uint64_t all) { progress.show(done, all); });
        steps = stepsOf(model, model.node(1)).size();
        auto const& nodes = model.nodes();
        shapes = static_cast<std::size_t>(
            std::count_if(nodes.begin(), nodes.end(),
                          [](MoxRead::Node const& node) { return node.shape() != nullptr; }));
    }

    std::string pathOf(Finding const& finding) const
    {
        MoxRead::Node const& node = *finding.node;
        return MoxRead::NodePath::of(
            model, node.geometry() == nullptr ? node : MoxRead::ownerOf(model, node));
    }

    bool isGood() const { return findings.count(Severity::Error) == 0; }

    std::string file;
    MoxRead::Model model;
    Findings findings;
    std::size_t shapes = 0;
    std::size_t steps = 0;
};

char const* nameOf(Severity severity)
{
    return severity == Severity::Error     ? "error"
           : severity == Severity::Warning ? "warning"
                                           : "note";
}

std::string placeText(CheckedModel const& checked, Finding const& finding)
{
    if (finding.node == nullptr)
        return {};
    std::string text = " " + quoted(checked.pathOf(finding));
    if (finding.variable != nullptr)
        text += " dataset " + quoted(finding.variable->datasetName());
    if (finding.variable != nullptr && finding.variable->hasStep())
        text += " step " + quoted(finding.variable->stepName());
    return text + ":";
}

void printFinding(std::ostream& out, CheckedModel const& checked, Finding const& finding)
{
    out << nameOf(finding.kind->severity) << ':' << placeText(checked, finding) << ' '
        << finding.kind->name << ": expected " << finding.expected << ", found " << finding.found
        << '\n';
}

void printFindings(std::ostream& out, CheckedModel const& checked)
{
    std::vector<Finding> const listed = checked.findings.listed();
    for (auto finding = listed.begin(); finding != listed.end(); ++finding) {
        printFinding(out, checked, *finding);
        bool const isLastOfKind =
            finding + 1 == listed.end() || (finding + 1)->kind != finding->kind;
        std::size_t const unlisted = checked.findings.unlistedCount(*finding->kind);
        if (isLastOfKind && unlisted > 0)
            out << nameOf(finding->kind->severity) << ": " << finding->kind->name << ": and "
                << countText(unlisted) << " more\n";
    }
}

void printText(std::ostream& out, CheckedModel const& checked)
{
    printFindings(out, checked);
    std::size_t const errors = checked.findings.count(Severity::Error);
    std::size_t const warnings = checked.findings.count(Severity::Warning);
    out << checked.file << ": ";
    if (errors + warnings == 0)
        out << "ok";
    else
        out << countText(errors, "error") << ", " << countText(warnings, "warning");
    out << " (" << countText(checked.shapes, "shape") << ", "
        << countText(checked.model.variableCount(), "dataset") << ", "
        << countText(checked.steps, "step") << ")\n";
}

void writeOptional(JsonWriter& json, char const* name, bool isThere, std::string const& value)
{
    json.key(name);
    if (isThere)
        json.value(value);
    else
        json.null();
}

void writeFinding(JsonWriter& json, CheckedModel const& checked, Finding const& finding)
{
    MoxRead::Variable const* const variable = finding.variable;
    json.beginObject(JsonWriter::OneLine).member("severity", nameOf(finding.kind->severity));
    json.member("kind", finding.kind->name);
    bool const hasNode = finding.node != nullptr;
    writeOptional(json, "path", hasNode, hasNode ? checked.pathOf(finding) : "");
    writeOptional(json, "dataset", variable != nullptr,
                  variable == nullptr ? "" : variable->datasetName());
    writeOptional(json, "step", variable != nullptr && variable->hasStep(),
                  variable == nullptr ? "" : variable->stepName());
    json.member("expected", finding.expected).member("found", finding.found).endObject();
}

void writeCounts(JsonWriter& json, Findings const& findings)
{
    json.key("kinds").beginArray();
    for (Kind const* kind : Check::Kinds::all) {
        if (findings.count(*kind) == 0)
            continue;
        json.beginObject(JsonWriter::OneLine).member("kind", kind->name);
        json.member("severity", nameOf(kind->severity));
        json.member("count", findings.count(*kind)).endObject();
    }
    json.endArray();
}

void printJson(std::ostream& out, CheckedModel const& checked)
{
    JsonWriter json(out);
    json.beginObject().member("file", checked.file).member("ok", checked.isGood());
    json.member("shapeCount", checked.shapes);
    json.member("datasetCount", checked.model.variableCount());
    json.member("stepCount", checked.steps);
    json.member("errorCount", checked.findings.count(Severity::Error));
    json.member("warningCount", checked.findings.count(Severity::Warning));
    json.member("noteCount", checked.findings.count(Severity::Note));
    json.key("findings").beginArray();
    for (Finding const& finding : checked.findings.listed())
        writeFinding(json, checked, finding);
    json.endArray();
    writeCounts(json, checked.findings);
    json.endObject();
}

} // namespace

void addCheckCommand(CommandLine& commandLine)
{
    auto const options = std::make_shared<CheckArguments>();
    SubCommand command =
        commandLine.addCommand("check", "Check whether what a model file says means something");
    command.add("FILE", options->file, "Model file, or index of a partitioned model").required();
    Argument const parts =
        command.addFlag("--parts", options->parts, "Check the files of an index one by one");
    command.addFlag("--json", options->json, "Print JSON").excludes(parts);
    command.explain("It tells of meaning: of meshes, results and steps. "
                    "mox verify tells of bytes.\n\nExample:\n  mox check beam.mox");
    command.run([options] { return checkFile(*options, std::cout, std::cerr); });
}

int checkFile(CheckArguments const& options, std::ostream& out, std::ostream& err)
{
    if (options.parts && MoxRead::PartitionIndex::isIndex(options.file))
        return forEachPart(options.file, err, [&](Part const& part) {
            CheckArguments own = options;
            own.file = part.path;
            return checkFile(own, out, err);
        });
    bool isGood = false;
    int const status = runOnFile(options.file, err, [&] {
        CheckedModel const checked(options);
        isGood = checked.isGood();
        if (options.json)
            printJson(out, checked);
        else
            printText(out, checked);
    });
    return isGood ? status : 1;
}

} // namespace Mox
