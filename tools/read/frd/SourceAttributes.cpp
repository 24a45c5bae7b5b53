#include "SourceAttributes.h"

#include "exchange/NearestFloat.h"

#include <cstddef>
#include <map>
#include <string>

namespace Frd {

namespace {

std::string attributeName(std::string const& fieldName)
{
    static std::map<std::string, std::string> const names = {{"COMPILETIME", "SolverCompileTime"},
                                                             {"DATE", "Date"},
                                                             {"DBN", "Database"},
                                                             {"DIR", "Directory"},
                                                             {"HOST", "Host"},
                                                             {"PGM", "Solver"},
                                                             {"TIME", "Time"},
                                                             {"USER", "User"},
                                                             {"VERSION", "SolverVersion"}};
    return names.at(fieldName);
}

char const* analysisType(AnalysisKind kind)
{
    switch (kind) {
    case AnalysisKind::Static:
        return "Static";
    case AnalysisKind::TimeStep:
        return "Time step";
    case AnalysisKind::Frequency:
        return "Frequency";
    case AnalysisKind::LoadStep:
        return "Load step";
    default:
        return "User named";
    }
}

char const* valueName(AnalysisKind kind)
{
    switch (kind) {
    case AnalysisKind::Frequency:
        return "Frequency";
    case AnalysisKind::UserNamed:
        return "Value";
    default:
        return "Time";
    }
}

void addUnlessBlank(Exchange::AttributeList& attributes, char const* name, std::string const& text)
{
    if (!text.empty())
        attributes.emplace_back(name, text);
}

} // namespace

Exchange::AttributeList rootAttributes(Header const& header)
{
    Exchange::AttributeList attributes;
    for (auto const& [name, value] : header.fields)
        attributes.emplace_back(attributeName(name), value);
    for (std::size_t i = 0; i < header.titles.size(); ++i)
        attributes.emplace_back(i == 0 ? "Title" : "Title " + std::to_string(i + 1),
                                header.titles[i]);
    return attributes;
}

Exchange::AttributeList stepAttributes(ResultBlock const& block)
{
    Exchange::AttributeList attributes;
    attributes.emplace_back("StepNumber", block.step ? block.step->step : block.stepNumber);
    attributes.emplace_back("AnalysisType", analysisType(block.kind));
    attributes.emplace_back(valueName(block.kind), Exchange::nearestFloat(block.value));
    addUnlessBlank(attributes, "Analysis", block.analysis);
    addUnlessBlank(attributes, "Text", block.text);
    if (block.mode)
        attributes.emplace_back("Mode", *block.mode);
    else if (block.step)
        attributes.emplace_back("Increment", block.step->increment);
    if (block.kind == AnalysisKind::Frequency)
        attributes.emplace_back("Category", "Vibration");
    for (auto const& [name, text] : block.parameters)
        attributes.emplace_back("Parameter." + name, text);
    return attributes;
}

} // namespace Frd
