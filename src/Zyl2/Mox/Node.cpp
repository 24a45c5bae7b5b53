#include "Zyl2/Mox/Node.h"

namespace Zyl2Mox {

Node::Node(std::string const& name) : name_(name) {}

Node::~Node() = default;

std::string Node::GetType() const
{
    return "Node";
}

std::string Node::GetVersion() const
{
    return "0.1";
}

bool Node::IsLoaded() const
{
    return loaded_;
}

void Node::Load(std::string const& /*path*/) {}

void Node::Save() {}

void Node::CopyToBlock(Zyl2Wvf::Block& /*block*/) const {}

void Node::CopyFromBlock(Zyl2Wvf::Block const& /*block*/) {}

} // namespace Zyl2Mox
