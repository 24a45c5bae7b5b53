#ifndef ZYL2_MOX2_ATTRIBUTEMAP_H
#define ZYL2_MOX2_ATTRIBUTEMAP_H

#include "Zyl2/Mox2/AttributeValue.h"

#include <map>
#include <string>

namespace Zyl2 {
namespace Mox2 {

/// Attributes by name. A class of its own so that the public header can name it without its parts.
class AttributeMap : public std::map<std::string, AttributeValue>
{};

} // namespace Mox2
} // namespace Zyl2

#endif
