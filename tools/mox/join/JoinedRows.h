#ifndef MOX_JOIN_JOINEDROWS_H
#define MOX_JOIN_JOINEDROWS_H

#include "RowMap.h"

#include "moxread/Variable.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Mox::Join {

/// The rows of one dataset of a joined shape, which come piece by piece: of several values of one
/// row, the first stays.
class JoinedRows
{
public:
    /// \param map must outlive this
    JoinedRows(RowMap const& map, MoxRead::ElementType type, std::size_t width);

    /// \param own values of a piece, as many rows as the map has of it
    void take(std::size_t piece, std::vector<std::uint32_t> const& own);

    /// How many rows no piece had: they are NaN, or 0 for integers.
    std::size_t missing() const;
    /// How many rows came with several values.
    std::size_t different() const { return different_; }
    /// The largest difference of two values of one place; infinity where one of them is NaN.
    double difference() const { return difference_; }
    /// The largest magnitude of all values.
    double largest() const { return largest_; }

    /// To be called once.
    std::vector<std::uint32_t> takeWords() { return std::move(words_); }

private:
    bool takeRow(std::uint32_t const* own, std::size_t row);
    bool differs(std::uint32_t known, std::uint32_t word);

    RowMap const& map_;
    MoxRead::ElementType type_;
    std::size_t width_;
    std::vector<std::uint32_t> words_;
    std::vector<bool> isKnown_;
    std::size_t different_ = 0;
    double difference_ = 0;
    double largest_ = 0;
};

} // namespace Mox::Join

#endif
