#include "Zyl2/Mox/NodesWithSameName.h"

#include "Zyl2/Mox/VirtualNodesWithSameName.h"

namespace Zyl2Mox {

bool NodesWithSameName::operator()(Node const* left, Node const* right) const
{
    return VirtualNodesWithSameName()(left, right) && left->GetType() == right->GetType() &&
           left->GetVersion() == right->GetVersion();
}

} // namespace Zyl2Mox
