#ifndef ZYL2_MOX2_DATASETLAYOUT_H
#define ZYL2_MOX2_DATASETLAYOUT_H

#include <Zyl2/Mox2/DatasetType.h>

#include "Zyl2/Mox/Geometry.h"

#include <cstdint>

namespace Zyl2 {
namespace Mox2 {

/// What a dataset type stands for: the variable type says how the values are laid out, the name
/// says what they are.
struct DatasetLayout
{
    /// Null for a type without a default name.
    char const* name;
    /// Values per row.
    std::uint8_t width;
    Zyl2Mox::Geometry::VariableType variableType;
};

/// \return null for a value that is no dataset type
DatasetLayout const* findDatasetLayout(DatasetType type);

} // namespace Mox2
} // namespace Zyl2

#endif
