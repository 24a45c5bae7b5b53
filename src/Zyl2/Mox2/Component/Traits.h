#ifndef ZYL2_MOX2_COMPONENT_TRAITS_H
#define ZYL2_MOX2_COMPONENT_TRAITS_H

#include <Zyl2/Mox2/Attributes.h>

#include <map>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Component {

/// How paths and their attributes are read from the containers that a host may give.
template <typename ContainerT>
struct Traits;

template <>
struct Traits<std::vector<std::string>>
{
    static std::string const& path(std::string const& entry) { return entry; }
    static Attributes const& attributes(std::string const& entry);
};

template <>
struct Traits<std::map<std::string, Attributes>>
{
    using Entry = std::map<std::string, Attributes>::value_type;

    static std::string const& path(Entry const& entry) { return entry.first; }
    static Attributes const& attributes(Entry const& entry) { return entry.second; }
};

} // namespace Component
} // namespace Mox2
} // namespace Zyl2

#endif
