#include "UsedRows.h"

#include <algorithm>
#include <cstddef>

namespace Common {

namespace {

constexpr std::uint64_t largestSpread = 8;

} // namespace

UsedRows::UsedRows(std::vector<std::uint32_t> const& references)
{
    if (references.empty())
        return;
    auto const [first, last] = std::minmax_element(references.begin(), references.end());
    first_ = *first;
    if (std::uint64_t(*last - *first) / largestSpread < references.size())
        findInRange(references, *last);
    else
        sort(references);
}

void UsedRows::findInRange(std::vector<std::uint32_t> const& references, std::uint32_t last)
{
    std::vector<bool> isUsed(std::size_t(last - first_) + 1);
    for (std::uint32_t const row : references)
        isUsed[row - first_] = true;
    places_.resize(isUsed.size());
    for (std::size_t i = 0; i < isUsed.size(); ++i) {
        if (!isUsed[i])
            continue;
        places_[i] = static_cast<std::uint32_t>(rows_.size());
        rows_.push_back(static_cast<std::uint32_t>(first_ + i));
    }
}

void UsedRows::sort(std::vector<std::uint32_t> const& references)
{
    rows_ = references;
    std::sort(rows_.begin(), rows_.end());
    rows_.erase(std::unique(rows_.begin(), rows_.end()), rows_.end());
    rows_.shrink_to_fit();
}

std::uint32_t UsedRows::placeOf(std::uint32_t row) const
{
    if (!places_.empty())
        return places_[row - first_];
    return static_cast<std::uint32_t>(std::lower_bound(rows_.begin(), rows_.end(), row) -
                                      rows_.begin());
}

} // namespace Common
