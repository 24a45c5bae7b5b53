#include "Zyl2/Mox2/DatasetLayout.h"

#include "Zyl2/Exception/Sentence.h"

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

// By dataset type, as hosts write them.
constexpr std::array<char const*, 31> typeNames{
    "Connectivity1", "Connectivity2", "Connectivity3", "Polylength1", "Polylength2", "Polylength3",
    "PartElements1", "PartElements2", "PartElements3", "Coordinates", "Result10",    "Result11",
    "Result12",      "Result13",      "Result14",      "Result15",    "Result16",    "Result17",
    "Result18",      "Result19",      "Result20",      "Result21",    "Result22",    "Result23",
    "Result24",      "Result25",      "Result26",      "NodeIds",     "ElementIds",  "Displacement",
    "Displacement6"};

} // namespace

DatasetLayout const* findDatasetLayout(DatasetType type)
{
    auto const index = static_cast<std::size_t>(type);
    return index < layouts.size() ? &layouts[index] : nullptr;
}

std::string titleOf(DatasetType type, std::string const& name) noexcept
{
    DatasetLayout const* const layout = findDatasetLayout(type);
    if (layout == nullptr)
        return lackOfType(type);
    char const* const typeName = typeNames[static_cast<std::size_t>(type)];
    if (layout->name != nullptr && name == layout->name)
        return Exception::sentence(typeName);
    return Exception::sentence(typeName, " \"", name, "\"");
}

std::string lackOfName(DatasetType type) noexcept
{
    if (findDatasetLayout(type) == nullptr)
        return lackOfType(type);
    return Exception::sentence(typeNames[static_cast<std::size_t>(type)],
                               " has no default name: give one");
}

std::string lackOfType(DatasetType type) noexcept
{
    return Exception::sentence(static_cast<unsigned int>(type), " is no dataset type");
}

} // namespace Mox2
} // namespace Zyl2
