#include "Zyl2/Mox/NodesWithSameName.h"

#include "Zyl2/Mox/VirtualNodesWithSameName.h"

#include <string>
#include <utility>

namespace Zyl2Mox {

namespace {

std::pair<std::string, std::string> KindOf(Node const& node)
{
    return {node.GetType(), node.GetVersion()};
}

} // namespace

bool NodesWithSameName::operator()(Node const* left, Node const* right) const
{
    return VirtualNodesWithSameName()(left, right) && KindOf(*left) == KindOf(*right);
}

} // namespace Zyl2Mox
