#ifndef MOX_COMPARE_NAMEMATCHING_H
#define MOX_COMPARE_NAMEMATCHING_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Mox {

/// Which entries of two lists belong together: those of the same name, the first with the first,
/// the second with the second and so on.
struct NameMatching
{
    NameMatching(std::vector<std::string> const& left, std::vector<std::string> const& right);

    /// Matching names, by their places in the left and the right list; in the order of the left.
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    std::vector<std::size_t> onlyLeft;
    std::vector<std::size_t> onlyRight;

    /// Whether those that belong together stand in the same order in both.
    bool isInOrder() const;
};

} // namespace Mox

#endif
