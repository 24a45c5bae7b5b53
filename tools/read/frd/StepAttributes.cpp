#include "StepAttributes.h"

#include "exchange/NearestFloat.h"

#include <string>

namespace Frd {

namespace {

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
