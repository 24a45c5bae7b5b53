#ifndef EXPORT_PLACEMENT_H
#define EXPORT_PLACEMENT_H

#include "Mesh.h"
#include "Part.h"

#include <cstdint>

namespace Export {

/// Where the rows of a shape are in a grid.
struct Placement
{
    Part const* part = nullptr;
    /// Which of the grid's shapes it is, from 0.
    int index = 0;
    Mesh mesh;
    std::int64_t firstNode = 0;
    std::int64_t firstElement = 0;
    /// Its first place in the connectivity.
    std::int64_t firstEntry = 0;
};

} // namespace Export

#endif
