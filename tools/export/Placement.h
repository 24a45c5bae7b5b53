#ifndef EXPORT_PLACEMENT_H
#define EXPORT_PLACEMENT_H

#include "MeshDatasets.h"
#include "ModelShape.h"

#include <cstdint>

namespace Export {

/// Where the rows of a shape are in a grid.
struct Placement
{
    ModelShape const* shape = nullptr;
    /// Which of the grid's shapes it is, from 0.
    int index = 0;
    MeshDatasets mesh;
    std::int64_t firstNode = 0;
    std::int64_t firstElement = 0;
    /// Where the shape's nodes of elements begin in the grid's connectivity.
    std::int64_t firstEntry = 0;
};

} // namespace Export

#endif
