#include "SummaryText.h"

#include "JsonWriter.h"
#include "ValueText.h"

#include <cstdint>

namespace Mox {

namespace {

std::string counted(std::uint64_t count, std::string const& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string shownText(Export::ViewSummary const& summary)
{
    if (summary.field.empty())
        return "the shapes' colours";
    std::string const component = summary.component.empty() ? "" : ", " + summary.component;
    return summary.field + component + " from " + roundedTextOf(summary.least) + " to " +
           roundedTextOf(summary.greatest);
}

} // namespace

void printText(Export::ExportSummary const& summary, std::string const& output, std::ostream& out)
{
    out << output << ": " << counted(summary.steps.size(), "step") << ", "
        << counted(summary.shapes, "shape") << ", " << counted(summary.nodes, "node") << ", "
        << counted(summary.elements, "element") << ", " << counted(summary.fields.size(), "field")
        << " in " << counted(summary.files, "file") << " of " << counted(summary.bytes, "byte")
        << '\n';
}

void printText(Export::ViewSummary const& summary, std::string const& output, std::ostream& out)
{
    out << output << ": " << (summary.step.empty() ? "" : summary.step + ", ") << shownText(summary)
        << ", deformed " << roundedTextOf(summary.warp) << " times, " << summary.width << 'x'
        << summary.height << " pixels\n";
}

void printJson(Export::ExportSummary const& summary, std::string const& output, std::ostream& out)
{
    JsonWriter json(out);
    json.beginObject();
    json.member("file", output).key("steps").values(summary.steps);
    json.member("shapes", summary.shapes).member("nodes", summary.nodes);
    json.member("elements", summary.elements).key("fields").values(summary.fields);
    json.member("files", summary.files).member("bytes", summary.bytes);
    json.key("warnings").values(summary.warnings).endObject();
}

void printJson(Export::ViewSummary const& summary, std::string const& output, std::ostream& out)
{
    JsonWriter json(out);
    json.beginObject();
    json.member("file", output).member("width", summary.width).member("height", summary.height);
    json.member("step", summary.step).member("field", summary.field);
    json.member("component", summary.component).member("least", summary.least);
    json.member("greatest", summary.greatest).member("warp", summary.warp);
    json.key("warnings").values(summary.warnings).endObject();
}

} // namespace Mox
