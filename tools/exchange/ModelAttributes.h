#ifndef EXCHANGE_MODELATTRIBUTES_H
#define EXCHANGE_MODELATTRIBUTES_H

#include "Attribute.h"
#include "Report.h"

#include <Zyl2/Mox2/Attributes.h>

namespace Exchange {

/// As the library takes them. Says so when a text is longer than a model keeps.
Zyl2::Mox2::Attributes modelAttributes(AttributeList const& attributes, Report& report);

/// The same for attributes of datasets and steps, some names of which are reserved: these are left
/// out, with a warning.
Zyl2::Mox2::Attributes datasetAttributes(AttributeList const& attributes, Report& report);

} // namespace Exchange

#endif
