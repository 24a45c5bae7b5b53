#ifndef FRD_STEPATTRIBUTES_H
#define FRD_STEPATTRIBUTES_H

#include "ResultBlock.h"

#include <Zyl2/Mox2/Attributes.h>

namespace Frd {

/// What a model says of the step that a result block belongs to.
Zyl2::Mox2::Attributes stepAttributes(ResultBlock const& block);

} // namespace Frd

#endif
