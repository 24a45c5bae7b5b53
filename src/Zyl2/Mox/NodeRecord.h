#ifndef ZYL2_MOX_NODERECORD_H
#define ZYL2_MOX_NODERECORD_H

#include "Zyl2/Adt/TreeNode.h"
#include "Zyl2/Mox/Node.h"
#include "Zyl2/Wvf/Index.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Zyl2Mox {

/// What the tree's own block says of one node. Refers to the node's name, which has to outlive it.
class NodeRecord
{
public:
    /// \param lightPosition where the node's payload begins
    NodeRecord(Zyl2Adt::TreeNode<Node*> const& record, std::uint64_t lightPosition);

    std::size_t GetSize() const;

    /// Writes `GetSize()` bytes.
    void CopyTo(unsigned char* place) const;

    /// Puts the bytes that `CopyTo` writes under the key, field by field: a record may begin in
    /// one block and end in the next.
    void PutInto(Zyl2Wvf::Index& index, Zyl2Wvf::Index::Key& key) const;

private:
    std::array<std::uint32_t, 6> ids_;
    std::string const& name_;
    std::string type_;
    std::string version_;
    std::uint64_t lightPosition_;
    std::size_t positionSize_;
};

} // namespace Zyl2Mox

#endif
