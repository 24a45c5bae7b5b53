#ifndef EXPORT_STEPS_H
#define EXPORT_STEPS_H

#include "ModelShape.h"

#include <optional>
#include <string>
#include <vector>

namespace Export {

struct Step
{
    /// Empty for what stands in for a model without steps.
    std::string name;
    /// What orders it among the others: time, frequency, value or running number.
    double time = 0;
};

/// The steps of a model: in the order of their times when they have times, else in the order in
/// which the shapes have them. Steps whose times are not known, or not all different, are numbered
/// from 1; for the latter, `warning` says so.
std::vector<Step> stepsOf(std::vector<ModelShape> const& shapes,
                          std::optional<std::string>& warning);

} // namespace Export

#endif
