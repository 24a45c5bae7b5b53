#include "RowMap.h"

#include "moxread/FormatError.h"

#include <algorithm>
#include <limits>

namespace Mox::Join {

RowMap RowMap::byIds(std::vector<std::vector<std::uint32_t>> const& ids)
{
    std::vector<std::uint32_t> all;
    for (std::vector<std::uint32_t> const& piece : ids)
        all.insert(all.end(), piece.begin(), piece.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    RowMap map;
    map.count_ = all.size();
    for (std::vector<std::uint32_t> const& piece : ids) {
        std::vector<std::uint32_t>& rows = map.rows_.emplace_back();
        rows.reserve(piece.size());
        for (std::uint32_t const id : piece)
            rows.push_back(static_cast<std::uint32_t>(std::lower_bound(all.begin(), all.end(), id) -
                                                      all.begin()));
    }
    return map;
}

RowMap RowMap::inOrder(std::vector<std::size_t> const& counts)
{
    RowMap map;
    for (std::size_t const count : counts) {
        std::vector<std::uint32_t>& rows = map.rows_.emplace_back();
        if (count > std::numeric_limits<std::uint32_t>::max() - map.count_)
            throw MoxRead::FormatError("the pieces of a shape have more rows than a dataset can");
        rows.reserve(count);
        for (std::size_t row = 0; row < count; ++row)
            rows.push_back(static_cast<std::uint32_t>(map.count_++));
    }
    return map;
}

} // namespace Mox::Join
