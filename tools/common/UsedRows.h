#ifndef COMMON_USEDROWS_H
#define COMMON_USEDROWS_H

#include <cstdint>
#include <utility>
#include <vector>

namespace Common {

/// The rows of a table that a list refers to, each once and ascending, and where each of them is.
class UsedRows
{
public:
    explicit UsedRows(std::vector<std::uint32_t> const& references);

    std::vector<std::uint32_t> const& rows() const { return rows_; }
    std::vector<std::uint32_t> takeRows() && { return std::move(rows_); }

    /// Where `row` stands among the used rows, of which it has to be one.
    std::uint32_t placeOf(std::uint32_t row) const;

private:
    void findInRange(std::vector<std::uint32_t> const& references, std::uint32_t last);
    void sort(std::vector<std::uint32_t> const& references);

    std::vector<std::uint32_t> rows_;
    /// For each row from the first one on; empty where rows are so far apart that searching costs
    /// less than the memory.
    std::vector<std::uint32_t> places_;
    std::uint32_t first_ = 0;
};

} // namespace Common

#endif
