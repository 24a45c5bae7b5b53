#include "Source.h"

#include <string>

namespace Exchange {

void Source::readSteps(StepVisitor const& startStep, FieldVisitor const& addField)
{
    for (std::size_t i = 0; i < stepCount(); ++i) {
        startStep(namedStep(i));
        readStep(i, addField);
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
