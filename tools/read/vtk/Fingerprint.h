#ifndef READ_VTK_FINGERPRINT_H
#define READ_VTK_FINGERPRINT_H

#include <cstdint>

class vtkDataSet;

namespace VtkRead {

/// Tells whether a mesh is the same as in another step without keeping either.
struct Fingerprint
{
    /// Hash of the cells, their points, ids and ghost marks.
    std::uint64_t cells = 0;
    /// Hash of the coordinates.
    std::uint64_t coordinates = 0;

    static Fingerprint of(vtkDataSet* data);
};

} // namespace VtkRead

#endif
