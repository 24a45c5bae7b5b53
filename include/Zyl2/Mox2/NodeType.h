#ifndef ZYL2_MOX2_NODETYPE_H
#define ZYL2_MOX2_NODETYPE_H

namespace Zyl2 {
namespace Mox2 {

/// What `Model::addNode` adds.
enum class NodeType : int
{
    /// A group whose flag byte is 1; for the first node (the root) only.
    FlaggedRootGroup = 1,
    /// A group; for the first node (the root) only.
    RootGroup = 2,
    /// A group: a named node with a transform and attributes.
    Group = 3,
    /// A shape: a visible part with a material. Below the root it gets a geometry child, whose id
    /// `Model::addNode` returns and which array properties are added to.
    Shape = 4
};

} // namespace Mox2
} // namespace Zyl2

#endif
