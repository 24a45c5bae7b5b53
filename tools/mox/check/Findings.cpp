#include "Findings.h"

#include "Kinds.h"

#include <utility>

namespace Mox::Check {

void Findings::add(Finding finding)
{
    Entry& entry = entries_[finding.kind];
    ++entry.count;
    if (entry.listed.size() < greatestListedCount)
        entry.listed.push_back(std::move(finding));
}

bool Findings::isListing(Kind const& kind) const
{
    return count(kind) < greatestListedCount;
}

std::vector<Finding> Findings::listed() const
{
    std::vector<Finding> result;
    for (Kind const* kind : Kinds::all) {
        auto const entry = entries_.find(kind);
        if (entry != entries_.end())
            result.insert(result.end(), entry->second.listed.begin(), entry->second.listed.end());
    }
    return result;
}

std::size_t Findings::count(Kind const& kind) const
{
    auto const entry = entries_.find(&kind);
    return entry == entries_.end() ? 0 : entry->second.count;
}

std::size_t Findings::unlistedCount(Kind const& kind) const
{
    auto const entry = entries_.find(&kind);
    return entry == entries_.end() ? 0 : entry->second.count - entry->second.listed.size();
}

std::size_t Findings::count(Severity severity) const
{
    std::size_t result = 0;
    for (auto const& [kind, entry] : entries_)
        result += kind->severity == severity ? entry.count : 0;
    return result;
}

std::string countText(std::size_t count)
{
    std::string text = std::to_string(count);
    for (std::size_t place = text.size(); place > 3; place -= 3)
        text.insert(place - 3, 1, ',');
    return text;
}

std::string countText(std::size_t count, std::string const& unit)
{
    return countText(count) + " " + unit + (count == 1 ? "" : "s");
}

} // namespace Mox::Check
