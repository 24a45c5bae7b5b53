#include "integration/PropertySet.h"

namespace Integration {

void PropertySet::set(Zyl2::Mox2::PropertyType type, std::vector<float> const& values)
{
    host_.set(type, values);
    values_[type] = values;
}

void PropertySet::set(Zyl2::Mox2::PropertyType type, float value)
{
    host_.set(type, value);
    values_[type] = {value};
}

} // namespace Integration
