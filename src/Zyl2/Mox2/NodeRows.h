#ifndef ZYL2_MOX2_NODEROWS_H
#define ZYL2_MOX2_NODEROWS_H

#include <Zyl2/Mox2/Mesh.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// Which row of the coordinates a number of the connectivity means.
class NodeRows
{
public:
    /// \param nodes     how many rows there are
    /// \param ids       of the rows, unique; only where the numbering is by ids
    NodeRows(NodeNumbering numbering, std::size_t nodes, std::vector<unsigned int> const& ids);

    static constexpr unsigned int None = 4294967295U;

    /// \return the row; `None` where there is no such node
    template <typename T>
    unsigned int operator()(T number) const
    {
        if (number < 0 || static_cast<std::uint64_t>(number) >= None)
            return None;
        auto const value = static_cast<unsigned int>(number);
        if (isById_)
            return rowOf(value);
        // Where rows count from 1, that of 0 is far beyond the last one.
        unsigned int const row = value - first_;
        return row < nodes_ ? row : None;
    }

private:
    unsigned int rowOf(unsigned int id) const;

    bool isById_;
    unsigned int first_;
    std::size_t nodes_;
    /// By id, where ids are dense enough.
    std::vector<unsigned int> table_;
    /// Else in ascending order of ids.
    std::vector<std::pair<unsigned int, unsigned int>> pairs_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
