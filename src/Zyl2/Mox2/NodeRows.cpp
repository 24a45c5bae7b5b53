#include "Zyl2/Mox2/NodeRows.h"

#include <algorithm>

namespace Zyl2 {
namespace Mox2 {

namespace {

/// A table by id takes at most so many times the room of the ids.
constexpr std::size_t LargestSpread = 4;

} // namespace

NodeRows::NodeRows(NodeNumbering numbering, std::size_t nodes, std::vector<unsigned int> const& ids)
    : isById_(numbering == NodeNumbering::Ids), first_(numbering == NodeNumbering::FromOne ? 1 : 0),
      nodes_(nodes)
{
    if (!isById_ || ids.empty())
        return;
    std::size_t const largest = *std::max_element(ids.begin(), ids.end());
    if (largest / LargestSpread <= ids.size()) {
        table_.assign(largest + 1, None);
        for (std::size_t row = 0; row < ids.size(); ++row)
            table_[ids[row]] = static_cast<unsigned int>(row);
        return;
    }
    pairs_.reserve(ids.size());
    for (std::size_t row = 0; row < ids.size(); ++row)
        pairs_.emplace_back(ids[row], static_cast<unsigned int>(row));
    std::sort(pairs_.begin(), pairs_.end());
}

unsigned int NodeRows::rowOf(unsigned int id) const
{
    if (!table_.empty())
        return id < table_.size() ? table_[id] : None;
    auto const found = std::lower_bound(pairs_.begin(), pairs_.end(), std::make_pair(id, 0U));
    return found != pairs_.end() && found->first == id ? found->second : None;
}

} // namespace Mox2
} // namespace Zyl2
