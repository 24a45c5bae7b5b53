#ifndef ZYL2_MOX_VIRTUALNODESWITHSAMENAME_H
#define ZYL2_MOX_VIRTUALNODESWITHSAMENAME_H

#include "Zyl2/Mox/Node.h"

namespace Zyl2Mox {

/// Matches nodes of the same name, whatever they are; a record without a node matches nothing.
struct VirtualNodesWithSameName
{
    using ComparesLookUpKeys = void;

    bool operator()(Node const* left, Node const* right) const;
};

} // namespace Zyl2Mox

#endif
