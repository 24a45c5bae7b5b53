#ifndef ZYL2_UTIL_ATTRIBUTELIST_H
#define ZYL2_UTIL_ATTRIBUTELIST_H

#include "Zyl2/Util/AttributeValue.h"

#include <map>
#include <string>

namespace Zyl2Util {

/// Attributes by name; the order of names is the order in the file.
using AttributeList = std::map<std::string, AttributeValue>;

} // namespace Zyl2Util

#endif
