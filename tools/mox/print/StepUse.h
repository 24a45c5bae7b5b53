#ifndef MOX_PRINT_STEPUSE_H
#define MOX_PRINT_STEPUSE_H

#include "moxread/Attributes.h"
#include "moxread/Model.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Mox {

/// A step of a model, and what belongs to it.
struct StepUse
{
    std::string name;
    std::size_t datasets = 0;
    /// `Time`, `Frequency` or `Value`, from the first of its datasets that has it.
    MoxRead::Attributes times;
};

/// The steps of a node and all below it, in the order in which they appear first.
std::vector<StepUse> stepsOf(MoxRead::Model const& model, MoxRead::Node const& first);

} // namespace Mox

#endif
