#include "Source.h"

#include <string>

namespace Exchange {

void Source::readSteps(StepVisitor const& startStep, FieldVisitor const& addField)
{
    while (stepsRead_ < stepCount()) {
        startStep(namedStep(stepsRead_));
        readStep(stepsRead_, addField);
        ++stepsRead_;
    }
}

StepInfo Source::namedStep(std::size_t index) const
{
    StepInfo info = step(index);
    if (info.name.empty() && stepCount() > 1)
        info.name = "Step " + std::to_string(index + 1);
    return info;
}

} // namespace Exchange
