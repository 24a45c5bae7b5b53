#ifndef MOX_JOIN_ROWMAP_H
#define MOX_JOIN_ROWMAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Mox::Join {

/// Which rows of a joined shape the rows of its pieces become.
class RowMap
{
public:
    /// Rows of the same id are the same one; they come in ascending order of the ids.
    /// \param ids by piece
    static RowMap byIds(std::vector<std::vector<std::uint32_t>> const& ids);
    /// The rows of each piece behind those of the one before.
    /// \param counts by piece
    static RowMap inOrder(std::vector<std::size_t> const& counts);

    /// How many rows the joined shape has.
    std::size_t count() const { return count_; }
    /// How many rows a piece has.
    std::size_t countOf(std::size_t piece) const { return rows_[piece].size(); }
    std::uint32_t rowOf(std::size_t piece, std::size_t row) const { return rows_[piece][row]; }

private:
    std::size_t count_ = 0;
    std::vector<std::vector<std::uint32_t>> rows_;
};

} // namespace Mox::Join

#endif
