#ifndef EXCHANGE_ROWSELECTION_H
#define EXCHANGE_ROWSELECTION_H

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Exchange {

/// Some rows of a table, in order. All of them cost no memory.
class RowSelection
{
public:
    /// All rows of a table of `count` rows.
    explicit RowSelection(std::size_t count = 0) : count_(count) {}
    /// The rows of these numbers, from 0.
    explicit RowSelection(std::vector<std::uint32_t> rows)
        : rows_(std::move(rows)), count_(rows_.size()), isAll_(false)
    {}

    bool isAll() const { return isAll_; }
    std::size_t size() const { return count_; }
    std::size_t operator[](std::size_t index) const { return isAll_ ? index : rows_[index]; }

private:
    std::vector<std::uint32_t> rows_;
    std::size_t count_;
    bool isAll_ = true;
};

} // namespace Exchange

#endif
