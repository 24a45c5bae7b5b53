#include "JsonWriter.h"

#include "ValueText.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace Mox {

namespace {

std::string jsonString(std::string const& text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

template <typename Number>
std::string jsonNumber(Number number)
{
    if (std::isnan(number))
        return "\"NaN\"";
    if (std::isinf(number))
        return number > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    return textOf(number);
}

} // namespace

JsonWriter::JsonWriter(std::ostream& out) : out_(out) {}

JsonWriter& JsonWriter::beginObject(Layout layout)
{
    return begin('{', layout);
}

JsonWriter& JsonWriter::endObject()
{
    return end('}');
}

JsonWriter& JsonWriter::beginArray(Layout layout)
{
    return begin('[', layout);
}

JsonWriter& JsonWriter::endArray()
{
    return end(']');
}

JsonWriter& JsonWriter::key(std::string const& name)
{
    beginItem();
    out_ << jsonString(name) << ": ";
    followsKey_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::string const& text)
{
    return write(jsonString(text));
}

JsonWriter& JsonWriter::value(char const* text)
{
    return write(jsonString(text));
}

JsonWriter& JsonWriter::value(float number)
{
    return write(jsonNumber(number));
}

JsonWriter& JsonWriter::value(double number)
{
    return write(jsonNumber(number));
}

JsonWriter& JsonWriter::value(bool flag)
{
    return write(flag ? "true" : "false");
}

JsonWriter& JsonWriter::null()
{
    return write("null");
}

// An array or object inside of one that stands on one line stays on that line.
JsonWriter& JsonWriter::begin(char bracket, Layout layout)
{
    beginItem();
    bool const isInLine = !levels_.empty() && levels_.back().layout == Layout::OneLine;
    levels_.push_back({isInLine ? Layout::OneLine : layout, true});
    out_ << bracket;
    return *this;
}

JsonWriter& JsonWriter::end(char bracket)
{
    Level const level = levels_.back();
    levels_.pop_back();
    if (level.layout == Layout::Lines && !level.isEmpty)
        breakLine();
    out_ << bracket;
    if (levels_.empty())
        out_ << '\n';
    return *this;
}

JsonWriter& JsonWriter::write(std::string const& text)
{
    beginItem();
    out_ << text;
    return *this;
}

void JsonWriter::beginItem()
{
    bool const isMemberValue = followsKey_;
    followsKey_ = false;
    if (isMemberValue || levels_.empty())
        return;
    Level& level = levels_.back();
    bool const isFirst = level.isEmpty;
    level.isEmpty = false;
    if (!isFirst)
        out_ << (level.layout == Layout::Lines ? "," : ", ");
    if (level.layout == Layout::Lines)
        breakLine();
}

void JsonWriter::breakLine()
{
    out_ << '\n' << std::string(2 * levels_.size(), ' ');
}

} // namespace Mox
