#ifndef MOX_CHECK_ELEMENTKIND_H
#define MOX_CHECK_ELEMENTKIND_H

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Mox::Check {

/// How the nodes of an element span it.
struct ElementKind
{
    /// Nodes of an element, by their places in it, in the order in which they follow each other.
    using Path = std::vector<std::uint32_t>;

    /// The kind's name in messages, such as "hexahedron".
    std::string name;
    /// 1 to 3; 0 for points, which have no size.
    int dimension = 0;
    /// Of a line the nodes from end to end; of a surface the nodes around it, of each piece; of a
    /// solid the nodes around each face, counter-clockwise seen from outside. Mid-side nodes stand
    /// between the corners.
    std::vector<Path> paths;
};

/// The kinds that the elements of one connectivity may have.
class ElementKinds
{
public:
    /// \param dimension   1, 2 or 3
    /// \param elementType of the attribute `ElementType`; empty if there is none
    ElementKinds(int dimension, std::string elementType);

    /// Whether there are elements of that type and dimension at all.
    bool areKnown() const;

    /// Null when no such element has so many nodes.
    ElementKind const* of(std::uint32_t nodeCount);

private:
    int dimension_;
    std::string elementType_;
    std::unordered_map<std::uint32_t, ElementKind> known_;
};

} // namespace Mox::Check

#endif
