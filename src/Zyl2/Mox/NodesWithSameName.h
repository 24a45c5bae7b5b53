#ifndef ZYL2_MOX_NODESWITHSAMENAME_H
#define ZYL2_MOX_NODESWITHSAMENAME_H

#include "Zyl2/Mox/Node.h"

namespace Zyl2Mox {

/// Matches nodes of the same name, type and version; a record without a node matches nothing.
struct NodesWithSameName
{
    using ComparesLookUpKeys = void;

    bool operator()(Node const* left, Node const* right) const;
};

} // namespace Zyl2Mox

#endif
