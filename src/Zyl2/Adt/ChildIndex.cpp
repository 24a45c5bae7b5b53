#include "Zyl2/Adt/ChildIndex.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

namespace Zyl2Adt {

namespace {

constexpr std::size_t SmallestTable = 64;

} // namespace

void ChildIndex::Insert(IdType parent, std::string_view key, IdType child)
{
    // At most two thirds full, so that probes stay short.
    if ((chainCount_ + 1) * 3 > placeCount_ * 2)
        Grow();
    std::uint32_t const hash = Hash(parent, key);
    Chain& chain = FindPlace(hash);
    if (chain.first != 0) {
        InsertInOrder(chain, child);
        return;
    }
    chain = Chain{hash, child, child};
    ++chainCount_;
}

ChildIndex::IdType ChildIndex::GetFirst(IdType parent, std::string_view key) const
{
    return placeCount_ == 0 ? 0 : FindPlace(Hash(parent, key)).first;
}

std::uint32_t ChildIndex::Hash(IdType parent, std::string_view key)
{
    // Spreads the parents over all bits, so that equal names below different parents part.
    constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15U;
    std::uint64_t const hash =
        std::hash<std::string_view>()(key) ^ (std::uint64_t(parent) + 1) * goldenRatio;
    return static_cast<std::uint32_t>(hash ^ hash >> 32U);
}

/// Place of the chain of that hash, or the empty one where it would stand.
/// \pre the table has an empty place
ChildIndex::Chain& ChildIndex::FindPlace(std::uint32_t hash) const
{
    Chain* const table = GetTable();
    std::size_t const mask = placeCount_ - 1;
    std::size_t place = hash & mask;
    while (table[place].first != 0 && table[place].hash != hash)
        place = (place + 1) & mask;
    return table[place];
}

void ChildIndex::Grow()
{
    std::size_t const formerCount = placeCount_;
    std::size_t const count = std::max(SmallestTable, formerCount * 2);
    Zyl2Util::Buffer table;
    if (!table.Grow(count * sizeof(Chain)))
        throw std::bad_alloc();
    // Look-ups go to places all over the table, so that with small pages each would miss the
    // processor's table of pages, too.
    table.PreferHugePages();
    std::memset(table.GetData(), 0, table.GetSize());
    std::swap(table_, table);
    placeCount_ = count;
    auto const* const chains = reinterpret_cast<Chain const*>(table.GetData());
    for (std::size_t place = 0; place < formerCount; ++place)
        if (chains[place].first != 0)
            FindPlace(chains[place].hash) = chains[place];
}

void ChildIndex::InsertInOrder(Chain& chain, IdType child)
{
    std::size_t const lastId = std::max(chain.last, child);
    if (next_.size() <= lastId)
        next_.resize(lastId + 1, 0);
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
