#ifndef MOX_CHECK_SHAPEDATASETS_H
#define MOX_CHECK_SHAPEDATASETS_H

#include "moxread/Model.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Mox::Check {

/// The datasets of a geometry that make up its mesh, chosen as viewers choose them: those of the
/// usual name before others of the same type. Null where there is none.
struct ShapeDatasets
{
    ShapeDatasets(MoxRead::Model const& model, MoxRead::Node const& geometryNode);

    MoxRead::Node const* node;
    MoxRead::Variable const* coordinates = nullptr;
    MoxRead::Variable const* connectivity = nullptr;
    MoxRead::Variable const* polylength = nullptr;
    MoxRead::Variable const* nodeIds = nullptr;
    MoxRead::Variable const* elementIds = nullptr;

    /// 0 where there are no coordinates.
    std::uint32_t nodeCount = 0;
    /// Nothing where it can't be told: where a connectivity has no polylength.
    std::optional<std::uint32_t> elementCount;

    bool hasElements() const { return connectivity != nullptr && polylength != nullptr; }
};

bool isCoordinates(MoxRead::Variable const& variable);
/// False for datasets that have the layout of a connectivity but name elements.
bool isConnectivity(MoxRead::Variable const& variable);
bool isPolylength(MoxRead::Variable const& variable);
bool isNodeIds(MoxRead::Variable const& variable);
bool isElementIds(MoxRead::Variable const& variable);
/// Whether it is a mesh's and can't belong to a step.
bool isConstant(MoxRead::Variable const& variable);
bool isResultOnNodes(MoxRead::Variable const& variable);
bool isResultOnElements(MoxRead::Variable const& variable);

/// 1, 2 or 3.
int dimensionOf(MoxRead::Variable const& connectivity);

/// Value of the attribute `ElementType`; empty if there is none.
std::string elementTypeOf(MoxRead::Model const& model, MoxRead::Variable const& connectivity);

} // namespace Mox::Check

#endif
