#ifndef EXPORT_ELEMENTCELLS_H
#define EXPORT_ELEMENTCELLS_H

#include <cstdint>
#include <string>

namespace Export {

/// Tells which cells of VTK the elements of one connectivity are.
class ElementCells
{
public:
    /// \param dimension   1 for points and lines, 2 for faces, 3 for solids
    /// \param elementType name of the one type that all the elements have, or empty when dimension
    ///                    and number of nodes tell it
    /// Throws `Error` for a name that is none of a type.
    ElementCells(int dimension, std::string const& elementType);

    /// VTK's type of an element with so many nodes. Throws `Error` when there is none.
    unsigned char of(std::uint32_t nodeCount);

private:
    unsigned char find(std::uint32_t nodeCount) const;

    int dimension_;
    std::string elementType_;
    /// Elements next to each other mostly have the same number of nodes; none has 0.
    std::uint32_t lastNodeCount_ = 0;
    unsigned char lastNumber_ = 0;
};

} // namespace Export

#endif
