#ifndef EXPORT_CELLTYPES_H
#define EXPORT_CELLTYPES_H

#include <cstdint>
#include <string>

namespace Export {

/// Tells VTK's type of the elements of one connectivity.
class CellTypes
{
public:
    /// \param dimension   1 for points and lines, 2 for faces, 3 for solids
    /// \param elementType name of the one type that all the elements have, or empty when dimension
    ///                    and number of nodes tell it
    /// Throws `Error` for a name that is none of a type.
    CellTypes(int dimension, std::string const& elementType);

    /// Throws `Error` when there is no type of so many nodes.
    unsigned char of(std::uint32_t nodeCount) const;

private:
    int dimension_;
    std::string elementType_;
};

} // namespace Export

#endif
