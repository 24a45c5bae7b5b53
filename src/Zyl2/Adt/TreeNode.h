#ifndef ZYL2_ADT_TREENODE_H
#define ZYL2_ADT_TREENODE_H

#include <cstdint>

namespace Zyl2Adt {

/// Record of one node: its place among its relatives, and a payload. The id 0 means no node, the
/// payload `T()` none.
template <typename T>
struct TreeNode
{
    std::uint32_t id = 0;
    std::uint32_t parent = 0;
    /// Sibling that was added just before this node.
    std::uint32_t previousSibling = 0;
    /// Sibling that was added just after this node.
    std::uint32_t nextSibling = 0;
    std::uint32_t firstChild = 0;
    std::uint32_t lastChild = 0;
    T value = T();
};

} // namespace Zyl2Adt

#endif
