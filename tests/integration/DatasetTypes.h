#ifndef TESTS_INTEGRATION_DATASETTYPES_H
#define TESTS_INTEGRATION_DATASETTYPES_H

#include <Zyl2/Mox2/DatasetType.h>

#include <array>
#include <cstdint>

namespace Integration {

/// What is known of a dataset type.
struct DatasetTypeFacts
{
    Zyl2::Mox2::DatasetType type;
    /// Null when the type has none.
    char const* defaultName;
    unsigned int width;
    std::uint32_t variableType;
};

using DatasetTypeTable = std::array<DatasetTypeFacts, 31>;

/// All types, in ascending order.
DatasetTypeTable const& datasetTypes();

DatasetTypeFacts const& factsOf(Zyl2::Mox2::DatasetType type);

} // namespace Integration

#endif
