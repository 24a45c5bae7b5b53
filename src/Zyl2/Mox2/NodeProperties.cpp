#include <Zyl2/Mox2/NodeProperties.h>

#include "Zyl2/Mox2/PropertyMap.h"

namespace Zyl2 {
namespace Mox2 {

NodeProperties::NodeProperties() : map_(new PropertyMap) {}

NodeProperties::NodeProperties(NodeProperties const& other) : map_(new PropertyMap(*other.map_)) {}

NodeProperties& NodeProperties::operator=(NodeProperties const& other)
{
    if (this != &other)
        *map_ = *other.map_;
    return *this;
}

NodeProperties::~NodeProperties()
{
    delete map_;
}

template <typename T>
typename IfProperty<T>::type NodeProperties::set(PropertyType type, T const& value)
{
    PropertyValue stored(value);
    (*map_)[type].swap(stored);
}

template <>
void NodeProperties::set<bool>(PropertyType type, bool const& value)
{
    set(type, value ? 1 : 0);
}

template <>
void NodeProperties::set<double>(PropertyType type, double const& value)
{
    set(type, static_cast<float>(value));
}

void NodeProperties::set(PropertyType type, char const* value)
{
    set(type, std::string(value));
}

template ZYL2_EXPORT void NodeProperties::set(PropertyType, int const&);
template ZYL2_EXPORT void NodeProperties::set(PropertyType, float const&);
template ZYL2_EXPORT void NodeProperties::set(PropertyType, std::string const&);
template ZYL2_EXPORT void NodeProperties::set(PropertyType, std::vector<int> const&);
template ZYL2_EXPORT void NodeProperties::set(PropertyType, std::vector<float> const&);

} // namespace Mox2
} // namespace Zyl2
