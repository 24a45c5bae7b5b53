#ifndef MOX_CHECK_FINDINGS_H
#define MOX_CHECK_FINDINGS_H

#include "Finding.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace Mox::Check {

/// Keeps the first findings of each kind and counts the others, so that a model with a mistake in
/// each of a million shapes is told of in a few lines.
class Findings
{
public:
    static constexpr std::size_t greatestListedCount = 10;

    void add(Finding finding);

    /// Whether a further finding of a kind will be listed: what it says need not be put together if
    /// not.
    bool isListing(Kind const& kind) const;

    /// In the order of the kinds, those of one kind in the order in which they were found.
    std::vector<Finding> listed() const;
    /// How many of a kind there are, listed or not.
    std::size_t count(Kind const& kind) const;
    /// How many of a kind are not listed.
    std::size_t unlistedCount(Kind const& kind) const;
    std::size_t count(Severity severity) const;

private:
    struct Entry
    {
        std::vector<Finding> listed;
        std::size_t count = 0;
    };

    std::unordered_map<Kind const*, Entry> entries_;
};

/// The number with a comma between thousands.
std::string countText(std::size_t count);

/// Such as "1 row" or "1,234 rows".
std::string countText(std::size_t count, std::string const& unit);

} // namespace Mox::Check

#endif
