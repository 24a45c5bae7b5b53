#include "ModelAttributes.h"

#include <algorithm>
#include <variant>

namespace Exchange {

namespace {

constexpr std::size_t longestText = 256;

std::string keptText(std::string const& name, std::string const& text, Report& report)
{
    std::size_t const kept = std::min(text.find('\0'), longestText);
    if (kept < text.size())
        report.warn("The text of the attribute '" + name + "' was cut to " + std::to_string(kept) +
                    " bytes.");
    return text.substr(0, kept);
}

bool isReserved(std::string const& name)
{
    for (char const* const reserved :
         {"Complex", "Contents", "DataSource", "DataType", "Structure"})
        if (name == reserved)
            return true;
    return name.rfind("Link.", 0) == 0;
}

void set(Zyl2::Mox2::Attributes& attributes, Attribute const& attribute, Report& report)
{
    auto const& [name, value] = attribute;
    if (auto const* const text = std::get_if<std::string>(&value))
        attributes.set(name, keptText(name, *text, report));
    else if (auto const* const number = std::get_if<float>(&value))
        attributes.set(name, *number);
    else
        attributes.set(name, std::get<int>(value));
}

} // namespace

Zyl2::Mox2::Attributes modelAttributes(AttributeList const& attributes, Report& report)
{
    Zyl2::Mox2::Attributes converted;
    for (Attribute const& attribute : attributes)
        set(converted, attribute, report);
    return converted;
}

Zyl2::Mox2::Attributes datasetAttributes(AttributeList const& attributes, Report& report)
{
    Zyl2::Mox2::Attributes converted;
    for (Attribute const& attribute : attributes)
        if (isReserved(attribute.first))
            report.warn("The attribute '" + attribute.first +
                        "' was left out: a model reserves its name.");
        else
            set(converted, attribute, report);
    return converted;
}

} // namespace Exchange
