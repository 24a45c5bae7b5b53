#include "vtkexport/SummaryText.h"

#include "vtkexport/XmlText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace VtkExport {

namespace {

std::string counted(std::uint64_t count, std::string const& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string numberText(double value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::string escaped(char character)
{
    if (character == '"' || character == '\\')
        return {'\\', character};
    if (static_cast<unsigned char>(character) >= 0x20)
        return {character};
    std::array<char, 8> text = {};
    std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(character));
    return text.data();
}

std::string json(std::string const& text)
{
    std::string result = "\"";
    for (char const character : xmlText(text))
        result += escaped(character);
    return result + '"';
}

std::string json(double number)
{
    return std::isfinite(number) ? numberText(number) : "null";
}

std::string json(std::uint64_t number)
{
    return std::to_string(number);
}

std::string json(std::vector<std::string> const& texts)
{
    std::string result = "[";
    for (std::string const& text : texts)
        result += (result.size() == 1 ? "" : ", ") + json(text);
    return result + ']';
}

/// An object, member by member.
class JsonObject
{
public:
    template <typename Value>
    JsonObject& add(std::string const& name, Value const& value)
    {
        text_ += (text_.empty() ? "" : ", ") + json(name) + ": " + json(value);
        return *this;
    }

    std::string text() const { return '{' + text_ + '}'; }

private:
    std::string text_;
};

std::string shownText(ViewSummary const& summary)
{
    if (summary.field.empty())
        return "the shapes' colours";
    std::string const component = summary.component.empty() ? "" : ", " + summary.component;
    return summary.field + component + " from " + numberText(summary.least) + " to " +
           numberText(summary.greatest);
}

} // namespace

std::string textOf(ExportSummary const& summary, std::string const& output)
{
    return output + ": " + counted(summary.steps.size(), "step") + ", " +
           counted(summary.shapes, "shape") + ", " + counted(summary.nodes, "node") + ", " +
           counted(summary.elements, "element") + ", " + counted(summary.fields.size(), "field") +
           " in " + counted(summary.files, "file") + " of " + counted(summary.bytes, "byte");
}

std::string textOf(ViewSummary const& summary, std::string const& output)
{
    std::string const step = summary.step.empty() ? "" : summary.step + ", ";
    return output + ": " + step + shownText(summary) + ", warp " + numberText(summary.warp) + ", " +
           std::to_string(summary.width) + "x" + std::to_string(summary.height) + " pixels";
}

std::string jsonOf(ExportSummary const& summary, std::string const& output)
{
    return JsonObject()
        .add("file", output)
        .add("steps", summary.steps)
        .add("shapes", std::uint64_t{summary.shapes})
        .add("nodes", summary.nodes)
        .add("elements", summary.elements)
        .add("fields", summary.fields)
        .add("files", std::uint64_t{summary.files})
        .add("bytes", summary.bytes)
        .add("warnings", summary.warnings)
        .text();
}

std::string jsonOf(ViewSummary const& summary, std::string const& output)
{
    return JsonObject()
        .add("file", output)
        .add("width", static_cast<std::uint64_t>(summary.width))
        .add("height", static_cast<std::uint64_t>(summary.height))
        .add("step", summary.step)
        .add("field", summary.field)
        .add("component", summary.component)
        .add("least", summary.least)
        .add("greatest", summary.greatest)
        .add("warp", summary.warp)
        .add("warnings", summary.warnings)
        .text();
}

} // namespace VtkExport
