#ifndef EXCHANGE_STEPATTRIBUTES_H
#define EXCHANGE_STEPATTRIBUTES_H

#include "Attribute.h"
#include "StepInfo.h"

namespace Exchange {

/// What a model says about a step: its running number, its time, and the time as a text when a
/// float isn't exactly the same; then whatever the source says, which takes precedence.
AttributeList stepAttributes(StepInfo const& step, int number);

} // namespace Exchange

#endif
