#include "StepAttributes.h"

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

void setUnlessBlank(Zyl2::Mox2::Attributes& attributes, char const* name, std::string const& text)
{
    if (!text.empty())
        attributes.set(name, text);
}

} // namespace

Zyl2::Mox2::Attributes stepAttributes(ResultBlock const& block)
{
    Zyl2::Mox2::Attributes attributes;
    attributes.set("StepNumber", block.step ? block.step->step : block.stepNumber);
    attributes.set("AnalysisType", analysisType(block.kind));
    attributes.set(valueName(block.kind), block.value);
    setUnlessBlank(attributes, "Analysis", block.analysis);
    setUnlessBlank(attributes, "Text", block.text);
    if (block.mode)
        attributes.set("Mode", *block.mode);
    else if (block.step)
        attributes.set("Increment", block.step->increment);
    if (block.kind == AnalysisKind::Frequency)
        attributes.set("Category", "Vibration");
    for (auto const& [name, text] : block.parameters)
        attributes.set("Parameter." + name, text);
    return attributes;
}

} // namespace Frd
