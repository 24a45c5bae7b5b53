#ifndef ZYL2_MOX_NODELOOKUPKEY_H
#define ZYL2_MOX_NODELOOKUPKEY_H

#include "Zyl2/Adt/AdtTree.h"
#include "Zyl2/Mox/Node.h"

#include <string_view>

namespace Zyl2Adt {

/// Nodes are looked up by their names.
template <>
struct LookUpKey<Zyl2Mox::Node*>
{
    static std::string_view Of(Zyl2Mox::Node* const& node)
    {
        return node == nullptr ? std::string_view() : std::string_view(node->GetName());
    }
};

} // namespace Zyl2Adt

#endif
