#ifndef ZYL2_MOX2_STEPDATA_H
#define ZYL2_MOX2_STEPDATA_H

#include "Zyl2/Mox2/AttributeMap.h"

#include <string>

namespace Zyl2 {
namespace Mox2 {

/// A step as commands hold it.
struct StepData
{
    std::string name;
    AttributeMap attributes;
};

} // namespace Mox2
} // namespace Zyl2

#endif
