#ifndef ZYL2_MOX2_ADDER_COMPONENTS_H
#define ZYL2_MOX2_ADDER_COMPONENTS_H

#include <Zyl2/Mox2/Attributes.h>

#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/GetComponentArray.h"

#include <map>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

/// Adds the nodes that absolute paths name and reports the node that each path ends in.
template <typename ContainerT, typename IdsT>
class Components : public Base::Modifier<Database>
{
public:
    Components(ContainerT const& componentPaths, std::string const& pathSeparator)
        : paths(componentPaths), separator(pathSeparator)
    {}
    Components(ContainerT const&& componentPaths, std::string const& pathSeparator) = delete;

    /// \throws InvalidObjectState "File not open."; "File not opened in write mode"; not without
    ///         paths
    /// \throws InvalidArguments "Relative paths not supported"; an attribute of a type that can't
    ///         be stored
    /// \throws NotYetImplemented a path starts at another root
    void update(Database& database) override;

    /// Refers to the host's container, which must outlive the adder: a copy of millions of paths
    /// takes as much memory as half of the nodes that they name.
    ContainerT const& paths;
    std::string separator;
    /// One for each path; 0 for a path without names.
    IdsT ids;

private:
    class Visitor;
};

extern template class Components<std::vector<std::string>, ComponentArray>;
extern template class Components<std::map<std::string, Attributes>, ComponentArray>;

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2

#endif
