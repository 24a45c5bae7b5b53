#include "Difference.h"

#include "mox/print/ValueText.h"

#include "moxread/Text.h"

namespace Mox {

using MoxRead::quoted;

namespace {

using Place = ValueDifference::Place;

std::string numberText(double value, bool isFloat)
{
    return isFloat ? textOf(static_cast<float>(value))
                   : std::to_string(static_cast<std::uint32_t>(value));
}

std::string placeText(std::string const& difference, Place const& place,
                      std::vector<std::string> const& columns, bool isFloat)
{
    std::string const column =
        columns.size() > 1 ? ", component " + columns[place.column] : std::string();
    return difference + " in row " + std::to_string(place.row) + column + " (" +
           numberText(place.left, isFloat) + " in A, " + numberText(place.right, isFloat) +
           " in B)";
}

std::string valuesText(ValueDifference const& values, std::vector<std::string> const& columns)
{
    std::string text = std::to_string(values.differingRows) + " of " + std::to_string(values.rows) +
                       " rows differ";
    if (auto const& place = values.largestAbsolute)
        text += ", at most by " + placeText(numberText(place->difference, values.isFloat), *place,
                                            columns, values.isFloat);
    if (auto const& place = values.largestRelative)
        text += ", relatively by " + placeText(textOf(static_cast<float>(place->difference)),
                                               *place, columns, values.isFloat);
    if (values.notNumbers > 0)
        text += ", " + std::to_string(values.notNumbers) + " values are NaN in one only";
    return text;
}

void writeOptional(JsonWriter& json, std::string const& name,
                   std::optional<std::string> const& text)
{
    json.key(name);
    if (text)
        json.value(*text);
    else
        json.null();
}

void writeNumber(JsonWriter& json, std::string const& name, double value, bool isFloat)
{
    if (isFloat)
        json.member(name, static_cast<float>(value));
    else
        json.member(name, static_cast<std::uint32_t>(value));
}

void writePlace(JsonWriter& json, std::string const& name, std::optional<Place> const& place,
                bool isFloat)
{
    json.key(name);
    if (!place) {
        json.null();
        return;
    }
    json.beginObject(JsonWriter::Layout::OneLine).member("difference", place->difference);
    json.member("row", place->row).member("column", place->column);
    writeNumber(json, "a", place->left, isFloat);
    writeNumber(json, "b", place->right, isFloat);
    json.endObject();
}

void writeValues(JsonWriter& json, std::optional<ValueDifference> const& values)
{
    json.key("values");
    if (!values) {
        json.null();
        return;
    }
    json.beginObject().member("rows", values->rows).member("differingRows", values->differingRows);
    json.member("notNumbers", values->notNumbers);
    writePlace(json, "largestAbsolute", values->largestAbsolute, values->isFloat);
    writePlace(json, "largestRelative", values->largestRelative, values->isFloat);
    json.endObject();
}

std::string joined(std::vector<std::string> const& parts)
{
    std::string text;
    for (std::string const& part : parts)
        text += (text.empty() ? "" : " ") + part;
    return text;
}

} // namespace

std::string Difference::text() const
{
    std::string const subject = subjectText() + ": ";
    if (values)
        return subject + valuesText(*values, columns);
    if (left && right)
        return subject + *left + " in A, " + *right + " in B";
    return subject + (left ? "only in A, " + *left : "only in B, " + right.value_or(""));
}

// A difference that its other members tell needs no kind.
std::string Difference::subjectText() const
{
    std::vector<std::string> parts;
    if (path)
        parts.push_back(quoted(*path));
    if (dataset)
        parts.push_back("dataset " + quoted(*dataset));
    if (step)
        parts.push_back("step " + quoted(*step));
    bool const isToldByParts =
        kind == "node" || kind == "dataset" || kind == "step" || kind == "values";
    if (!isToldByParts)
        parts.push_back(kind);
    if (property)
        parts.push_back(quoted(*property));
    return joined(parts);
}

void Difference::write(JsonWriter& json) const
{
    json.beginObject().member("kind", kind);
    writeOptional(json, "path", path);
    writeOptional(json, "dataset", dataset);
    writeOptional(json, "step", step);
    writeOptional(json, "property", property);
    writeOptional(json, "a", left);
    writeOptional(json, "b", right);
    writeValues(json, values);
    json.endObject();
}

} // namespace Mox
