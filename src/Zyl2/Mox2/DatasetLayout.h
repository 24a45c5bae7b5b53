#ifndef ZYL2_MOX2_DATASETLAYOUT_H
#define ZYL2_MOX2_DATASETLAYOUT_H

#include <Zyl2/Mox2/DatasetType.h>

#include "Zyl2/Mox/Geometry.h"

#include <cstdint>
#include <string>

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

// Texts in which failures speak of datasets; empty when there is no memory for them.

/// The type, and the dataset's name where that is another one: Result12 "Stress".
std::string titleOf(DatasetType type, std::string const& name) noexcept;

/// Says that a number is no dataset type, or that the type has no default name.
std::string lackOfName(DatasetType type) noexcept;

/// Says that a number is no dataset type.
std::string lackOfType(DatasetType type) noexcept;

} // namespace Mox2
} // namespace Zyl2

#endif
