#ifndef TESTS_INTEGRATION_PROPERTYSET_H
#define TESTS_INTEGRATION_PROPERTYSET_H

#include <Zyl2/Mox2/NodeProperties.h>

#include <cstddef>
#include <map>
#include <vector>

namespace Integration {

/// Node properties as a host gives them, and in a form that a test can look into.
class PropertySet
{
public:
    enum class Form
    {
        Number,
        Numbers,
        /// Of a type that no property is read in.
        Other
    };
    struct Entry
    {
        Form form;
        /// A single number is a vector of one.
        std::vector<float> values;
    };

    void set(Zyl2::Mox2::PropertyType type, std::vector<float> const& values);
    void set(Zyl2::Mox2::PropertyType type, float value);
    void set(Zyl2::Mox2::PropertyType type, double value);
    /// A value of a type that no property is read in, of the kinds from 0 on.
    void setOther(Zyl2::Mox2::PropertyType type, std::size_t kind);
    static std::size_t otherKinds();

    Zyl2::Mox2::NodeProperties const& host() const { return host_; }
    std::map<Zyl2::Mox2::PropertyType, Entry> const& entries() const { return entries_; }

private:
    Zyl2::Mox2::NodeProperties host_;
    std::map<Zyl2::Mox2::PropertyType, Entry> entries_;
};

} // namespace Integration

#endif
