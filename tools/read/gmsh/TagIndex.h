#ifndef READ_GMSH_TAGINDEX_H
#define READ_GMSH_TAGINDEX_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace Gmsh {

/// Finds rows by tags. Tags are any positive numbers, in any order.
class TagIndex
{
public:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    TagIndex() = default;
    /// Row i is that of tag i.
    explicit TagIndex(std::vector<std::size_t> const& tags);

    std::uint32_t rowOf(std::size_t tag) const;

private:
    std::vector<std::pair<std::size_t, std::uint32_t>> sorted_;
};

} // namespace Gmsh

#endif
