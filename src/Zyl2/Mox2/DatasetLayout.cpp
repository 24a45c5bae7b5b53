#include "Zyl2/Mox2/DatasetLayout.h"

#include <array>

namespace Zyl2 {
namespace Mox2 {

namespace {

constexpr DatasetLayout layout(char const* name, std::uint8_t width, std::uint32_t variableType)
{
    return {name, width, static_cast<Zyl2Mox::Geometry::VariableType>(variableType)};
}

// By dataset type. "Node Ids" and "Element IDs" differ in case on purpose: readers know them so.
constexpr std::array<DatasetLayout, 31> layouts{
    layout("Connectivity", 1, 4),  layout("Connectivity", 1, 5),  layout("Connectivity", 1, 6),
    layout("Polylength", 1, 9),    layout("Polylength", 1, 9),    layout("Polylength", 1, 9),
    layout("Part Elements", 1, 4), layout("Part Elements", 1, 5), layout("Part Elements", 1, 6),
    layout("Coordinates", 3, 1),   layout(nullptr, 1, 12),        layout(nullptr, 3, 13),
    layout(nullptr, 6, 14),        layout(nullptr, 6, 15),        layout(nullptr, 1, 16),
    layout(nullptr, 3, 17),        layout(nullptr, 6, 18),        layout(nullptr, 6, 19),
    layout(nullptr, 1, 20),        layout(nullptr, 3, 21),        layout(nullptr, 6, 22),
    layout(nullptr, 6, 23),        layout(nullptr, 1, 24),        layout(nullptr, 1, 25),
    layout(nullptr, 3, 26),        layout(nullptr, 6, 27),        layout(nullptr, 6, 28),
    layout("Node Ids", 1, 12),     layout("Element IDs", 1, 16),  layout("Displacement", 3, 13),
    layout("Displacement", 6, 14)};

} // namespace

DatasetLayout const* findDatasetLayout(DatasetType type)
{
    auto const index = static_cast<std::size_t>(type);
    return index < layouts.size() ? &layouts[index] : nullptr;
}

} // namespace Mox2
} // namespace Zyl2
