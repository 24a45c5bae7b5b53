#include "Zyl2/Adt/ChildIndex.h"

#include <functional>

namespace Zyl2Adt {

void ChildIndex::Insert(IdType parent, std::string_view key, IdType child)
{
    if (next_.size() <= child)
        next_.resize(std::size_t(child) + 1, 0);
    auto const [entry, isNew] = chains_.try_emplace(Hash(parent, key), Chain{child, child});
    if (!isNew)
        InsertInOrder(entry->second, child);
}

ChildIndex::IdType ChildIndex::GetFirst(IdType parent, std::string_view key) const
{
    auto const found = chains_.find(Hash(parent, key));
    return found == chains_.end() ? 0 : found->second.first;
}

std::size_t ChildIndex::Hash(IdType parent, std::string_view key)
{
    // Spreads the parents over all bits, so that equal names below different parents part.
    constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15U;
    return std::hash<std::string_view>()(key) ^ (std::uint64_t(parent) + 1) * goldenRatio;
}

void ChildIndex::InsertInOrder(Chain& chain, IdType child)
{
    // Children mostly come in the order of their ids.
    if (child > chain.last) {
        next_[chain.last] = child;
        chain.last = child;
    } else if (child < chain.first) {
        next_[child] = chain.first;
        chain.first = child;
    } else {
        IdType before = chain.first;
        while (next_[before] < child)
            before = next_[before];
        next_[child] = next_[before];
        next_[before] = child;
    }
}

} // namespace Zyl2Adt
