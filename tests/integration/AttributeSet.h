#ifndef TESTS_INTEGRATION_ATTRIBUTESET_H
#define TESTS_INTEGRATION_ATTRIBUTESET_H

#include <Zyl2/Mox2/Attributes.h>

#include "moxread/Attributes.h"

#include <cstddef>
#include <set>
#include <string>

namespace Integration {

/// Attributes as a host gives them, together with what a file has to say of them.
class AttributeSet
{
public:
    void set(std::string const& name, float value);
    void set(std::string const& name, double value);
    void set(std::string const& name, int value);
    void set(std::string const& name, unsigned int value);
    void set(std::string const& name, long value);
    void set(std::string const& name, std::string const& value);
    void set(std::string const& name, char const* value);

    /// A value of a type that attributes hold but a model can't store, of the kinds from 0 on.
    void setUnstorable(std::string const& name, std::size_t kind);
    static std::size_t unstorableKinds();

    /// Whether a model can store all of them.
    bool isStorable() const { return unstorable_.empty(); }

    Zyl2::Mox2::Attributes const& host() const { return host_; }
    MoxRead::Attributes const& stored() const { return stored_; }

private:
    Zyl2::Mox2::Attributes host_;
    template <typename T>
    void store(std::string const& name, T const& value);

    MoxRead::Attributes stored_;
    std::set<std::string> unstorable_;
};

} // namespace Integration

#endif
