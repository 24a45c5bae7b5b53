#ifndef EXCHANGE_SOURCE_H
#define EXCHANGE_SOURCE_H

#include "SequentialSource.h"

#include <cstddef>

namespace Exchange {

/// A source that knows its steps before it reads them.
class Source : public SequentialSource
{
public:
    virtual std::size_t stepCount() const = 0;
    /// Asked for before the fields of that step are read, and after those of the step before.
    virtual StepInfo step(std::size_t index) const = 0;

    /// Hands over the fields of one step, as `readSteps` does. Called once for each step, in
    /// ascending order.
    virtual void readStep(std::size_t index, FieldVisitor const& visit) = 0;

    /// Steps without a name get a number for one, unless there is only one step.
    void readSteps(StepVisitor const& startStep, FieldVisitor const& addField) final;

    /// Counts the mesh and each step.
    Stage stage() const final { return {1 + stepsRead_, 1 + stepCount()}; }

private:
    StepInfo namedStep(std::size_t index) const;

    std::size_t stepsRead_ = 0;
};

} // namespace Exchange

#endif
