#include "NameMatching.h"

#include <algorithm>
#include <unordered_map>

namespace Mox {

NameMatching::NameMatching(std::vector<std::string> const& left,
                           std::vector<std::string> const& right)
{
    // Last ones first, so that the next to be taken is at the end.
    std::unordered_map<std::string, std::vector<std::size_t>> free;
    for (std::size_t i = right.size(); i-- > 0;)
        free[right[i]].push_back(i);
    std::vector<bool> isTaken(right.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        auto const found = free.find(left[i]);
        if (found == free.end() || found->second.empty()) {
            onlyLeft.push_back(i);
            continue;
        }
        pairs.emplace_back(i, found->second.back());
        isTaken[found->second.back()] = true;
        found->second.pop_back();
    }
    for (std::size_t i = 0; i < right.size(); ++i)
        if (!isTaken[i])
            onlyRight.push_back(i);
}

bool NameMatching::isInOrder() const
{
    return std::is_sorted(pairs.begin(), pairs.end(), [](auto const& one, auto const& other) {
        return one.second < other.second;
    });
}

} // namespace Mox
