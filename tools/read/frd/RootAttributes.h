#ifndef READ_FRD_ROOTATTRIBUTES_H
#define READ_FRD_ROOTATTRIBUTES_H

#include "Header.h"

#include "exchange/Attribute.h"

namespace Frd {

/// What a model says of the whole result.
Exchange::AttributeList rootAttributes(Header const& header);

} // namespace Frd

#endif
