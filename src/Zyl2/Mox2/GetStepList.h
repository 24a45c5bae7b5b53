#ifndef ZYL2_MOX2_GETSTEPLIST_H
#define ZYL2_MOX2_GETSTEPLIST_H

#include <Zyl2/Mox2/Step.h>
#include <Zyl2/Mox2/StepList.h>

#include "Zyl2/Mox2/StepData.h"

#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// The steps that a host gave.
template <typename StepT>
std::vector<StepData> const& getStepList(StepT const& given);

template <>
std::vector<StepData> const& getStepList(StepList const& given);

/// One list of each thread serves all its single steps: consume it before the next call.
template <>
std::vector<StepData> const& getStepList(Step const& given);

} // namespace Mox2
} // namespace Zyl2

#endif
