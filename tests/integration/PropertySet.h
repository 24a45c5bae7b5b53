#ifndef TESTS_INTEGRATION_PROPERTYSET_H
#define TESTS_INTEGRATION_PROPERTYSET_H

#include <Zyl2/Mox2/NodeProperties.h>

#include <map>
#include <vector>

namespace Integration {

/// Node properties as a host gives them, and in a form that a test can look into.
class PropertySet
{
public:
    void set(Zyl2::Mox2::PropertyType type, std::vector<float> const& values);
    void set(Zyl2::Mox2::PropertyType type, float value);

    Zyl2::Mox2::NodeProperties const& host() const { return host_; }
    /// A single number is a vector of one.
    std::map<Zyl2::Mox2::PropertyType, std::vector<float>> const& values() const { return values_; }

private:
    Zyl2::Mox2::NodeProperties host_;
    std::map<Zyl2::Mox2::PropertyType, std::vector<float>> values_;
};

} // namespace Integration

#endif
