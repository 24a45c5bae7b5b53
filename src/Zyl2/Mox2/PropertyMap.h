#ifndef ZYL2_MOX2_PROPERTYMAP_H
#define ZYL2_MOX2_PROPERTYMAP_H

#include <Zyl2/Mox2/PropertyType.h>

#include <boost/variant.hpp>

#include <map>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// Value of a node property. The order of the alternatives is part of the interface; there is no
/// bool and no double.
using PropertyValue = boost::variant<int, float, std::string, std::vector<int>, std::vector<float>>;

/// Properties in ascending order of their type, which is the order in which they are applied.
class PropertyMap : public std::map<PropertyType, PropertyValue>
{};

} // namespace Mox2
} // namespace Zyl2

#endif
