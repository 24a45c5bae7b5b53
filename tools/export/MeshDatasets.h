#ifndef EXPORT_MESHDATASETS_H
#define EXPORT_MESHDATASETS_H

#include "ModelShape.h"
#include "Warnings.h"

#include <cstdint>

namespace Export {

/// The datasets that make up a shape's nodes and elements.
struct MeshDatasets
{
    /// Null for a shape without nodes, which then has no elements, either.
    MoxRead::Variable const* coordinates = nullptr;
    /// Both null for a shape without elements: its nodes are shown as points.
    MoxRead::Variable const* connectivity = nullptr;
    MoxRead::Variable const* polylength = nullptr;
    std::uint32_t nodeCount = 0;
    /// How many elements, points that stand in for elements included.
    std::uint32_t elementCount = 0;
    /// How many nodes all elements name together.
    std::uint32_t entryCount = 0;
    /// The elements' type, where their dimension and number of nodes don't tell it; else empty.
    std::string elementType;

    bool hasElements() const { return connectivity != nullptr; }
    /// 1, 2 or 3.
    int dimension() const;

    static MeshDatasets of(ModelShape const& shape, MoxRead::Model const& model,
                           Warnings& warnings);
};

/// Whether datasets of that kind describe a mesh, not a result on it.
bool isOfMesh(MoxRead::Variable const& variable);
bool isCoordinates(MoxRead::Variable const& variable);

} // namespace Export

#endif
