#include "Zyl2/Mox/VirtualNodesWithSameName.h"

namespace Zyl2Mox {

bool VirtualNodesWithSameName::operator()(Node const* left, Node const* right) const
{
    return left != nullptr && right != nullptr && left->GetName() == right->GetName();
}

} // namespace Zyl2Mox
