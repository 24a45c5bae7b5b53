#ifndef ZYL2_ADT_CHILDINDEX_H
#define ZYL2_ADT_CHILDINDEX_H

#include "Zyl2/Util/Buffer.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Zyl2Adt {

/// Finds the children of a node by a key without walking over the others.
///
/// Children of the same parent and key form a chain in ascending id order. Chains go by hash alone,
/// so whoever walks one has to check each child.
class ChildIndex
{
public:
    using IdType = std::uint32_t;

    /// Adds a child that was not added before.
    void Insert(IdType parent, std::string_view key, IdType child);

    /// First child of the chain; 0 when there is none.
    IdType GetFirst(IdType parent, std::string_view key) const;

    /// Next child of the chain that `child` is in; 0 at its end.
    IdType GetNext(IdType child) const { return child < next_.size() ? next_[child] : 0; }

private:
    /// A place of the table. Small, since with millions of nodes each look-up misses the cache.
    struct Chain
    {
        std::uint32_t hash;
        /// 0 in an empty place.
        IdType first;
        IdType last;
    };

    static std::uint32_t Hash(IdType parent, std::string_view key);
    Chain* GetTable() const { return reinterpret_cast<Chain*>(table_.GetData()); }
    Chain& FindPlace(std::uint32_t hash) const;
    void Grow();
    void InsertInOrder(Chain& chain, IdType child);

    /// Open addressing with linear probing; the number of places is a power of two, or 0.
    Zyl2Util::Buffer table_;
    std::size_t placeCount_ = 0;
    std::size_t chainCount_ = 0;
    /// Successor of each id in its chain; ids past the end have none.
    std::vector<IdType> next_;
};

} // namespace Zyl2Adt

#endif
