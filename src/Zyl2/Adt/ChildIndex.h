#ifndef ZYL2_ADT_CHILDINDEX_H
#define ZYL2_ADT_CHILDINDEX_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
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
    IdType GetNext(IdType child) const { return next_[child]; }

private:
    struct Chain
    {
        IdType first;
        IdType last;
    };

    static std::size_t Hash(IdType parent, std::string_view key);
    void InsertInOrder(Chain& chain, IdType child);

    std::unordered_map<std::size_t, Chain> chains_;
    /// Successor of each id in its chain.
    std::vector<IdType> next_;
};

} // namespace Zyl2Adt

#endif
