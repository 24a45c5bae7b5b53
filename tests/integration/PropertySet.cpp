#include "integration/PropertySet.h"

#include <array>
#include <string>

namespace Integration {

namespace {

using Zyl2::Mox2::NodeProperties;
using Zyl2::Mox2::PropertyType;

using PropertySetter = void (*)(NodeProperties&, PropertyType);

template <typename T>
void setDefault(NodeProperties& properties, PropertyType type)
{
    properties.set(type, T());
}

void setLiteral(NodeProperties& properties, PropertyType type)
{
    properties.set(type, "1");
}

constexpr std::array<PropertySetter, 5> otherSetters{setDefault<int>, setDefault<bool>,
                                                     setDefault<std::string>,
                                                     setDefault<std::vector<int>>, setLiteral};

} // namespace

void PropertySet::set(PropertyType type, std::vector<float> const& values)
{
    host_.set(type, values);
    entries_[type] = {Form::Numbers, values};
}

void PropertySet::set(PropertyType type, float value)
{
    host_.set(type, value);
    entries_[type] = {Form::Number, {value}};
}

void PropertySet::set(PropertyType type, double value)
{
    host_.set(type, value);
    entries_[type] = {Form::Number, {static_cast<float>(value)}};
}

void PropertySet::setOther(PropertyType type, std::size_t kind)
{
    otherSetters.at(kind)(host_, type);
    entries_[type] = {Form::Other, {}};
}

std::size_t PropertySet::otherKinds()
{
    return otherSetters.size();
}

} // namespace Integration
