#include "integration/DatasetTypes.h"

#include <cstddef>

namespace Integration {

using Type = Zyl2::Mox2::DatasetType;

DatasetTypeTable const& datasetTypes()
{
    static constexpr DatasetTypeTable table{{
        {Type::Connectivity1, "Connectivity", 1, 4},
        {Type::Connectivity2, "Connectivity", 1, 5},
        {Type::Connectivity3, "Connectivity", 1, 6},
        {Type::Polylength1, "Polylength", 1, 9},
        {Type::Polylength2, "Polylength", 1, 9},
        {Type::Polylength3, "Polylength", 1, 9},
        {Type::PartElements1, "Part Elements", 1, 4},
        {Type::PartElements2, "Part Elements", 1, 5},
        {Type::PartElements3, "Part Elements", 1, 6},
        {Type::Coordinates, "Coordinates", 3, 1},
        {Type::Result10, nullptr, 1, 12},
        {Type::Result11, nullptr, 3, 13},
        {Type::Result12, nullptr, 6, 14},
        {Type::Result13, nullptr, 6, 15},
        {Type::Result14, nullptr, 1, 16},
        {Type::Result15, nullptr, 3, 17},
        {Type::Result16, nullptr, 6, 18},
        {Type::Result17, nullptr, 6, 19},
        {Type::Result18, nullptr, 1, 20},
        {Type::Result19, nullptr, 3, 21},
        {Type::Result20, nullptr, 6, 22},
        {Type::Result21, nullptr, 6, 23},
        {Type::Result22, nullptr, 1, 24},
        {Type::Result23, nullptr, 1, 25},
        {Type::Result24, nullptr, 3, 26},
        {Type::Result25, nullptr, 6, 27},
        {Type::Result26, nullptr, 6, 28},
        {Type::NodeIds, "Node Ids", 1, 12},
        {Type::ElementIds, "Element IDs", 1, 16},
        {Type::Displacement, "Displacement", 3, 13},
        {Type::Displacement6, "Displacement", 6, 14},
    }};
    return table;
}

DatasetTypeFacts const& factsOf(Type type)
{
    return datasetTypes().at(static_cast<std::size_t>(type));
}

} // namespace Integration
