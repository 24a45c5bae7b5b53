#include "TagIndex.h"

#include <algorithm>

namespace Gmsh {

TagIndex::TagIndex(std::vector<std::size_t> const& tags)
{
    sorted_.reserve(tags.size());
    for (std::size_t i = 0; i < tags.size(); ++i)
        sorted_.emplace_back(tags[i], static_cast<std::uint32_t>(i));
    if (!std::is_sorted(sorted_.begin(), sorted_.end()))
        std::sort(sorted_.begin(), sorted_.end());
}

std::uint32_t TagIndex::rowOf(std::size_t tag) const
{
    // Most meshes number without gaps: then the tag itself says where to look.
    if (!sorted_.empty() && tag >= sorted_.front().first) {
        std::size_t const guess = tag - sorted_.front().first;
        if (guess < sorted_.size() && sorted_[guess].first == tag)
            return sorted_[guess].second;
    }
    auto const found = std::lower_bound(
        sorted_.begin(), sorted_.end(), tag,
        [](auto const& entry, std::size_t wanted) { return entry.first < wanted; });
    return found == sorted_.end() || found->first != tag ? none : found->second;
}

} // namespace Gmsh
