#ifndef READ_FRD_SOURCEATTRIBUTES_H
#define READ_FRD_SOURCEATTRIBUTES_H

#include "Header.h"
#include "ResultBlock.h"

#include "exchange/Attribute.h"

namespace Frd {

/// What a model says of the whole result.
Exchange::AttributeList rootAttributes(Header const& header);

/// What a model says of the step that a result block belongs to.
Exchange::AttributeList stepAttributes(ResultBlock const& block);

} // namespace Frd

#endif
