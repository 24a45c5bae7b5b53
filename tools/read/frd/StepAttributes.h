#ifndef READ_FRD_STEPATTRIBUTES_H
#define READ_FRD_STEPATTRIBUTES_H

#include "ResultBlock.h"

#include "exchange/Attribute.h"

namespace Frd {

/// What a model says of the step that a result block belongs to.
Exchange::AttributeList stepAttributes(ResultBlock const& block);

} // namespace Frd

#endif
