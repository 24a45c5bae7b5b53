#ifndef EXPORT_SHOWNFIELD_H
#define EXPORT_SHOWNFIELD_H

#include "StepReader.h"

#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>

#include <optional>
#include <string>

class vtkUnstructuredGrid;

namespace Export {

/// One number for each node or element, to be shown in colours.
struct ShownField
{
    std::string name;
    /// Empty for a field with one component.
    std::string component;
    bool isOnNodes = true;
    vtkSmartPointer<vtkFloatArray> values;
    /// The least and the greatest of the finite values; both NaN when there are none.
    double least = 0;
    double greatest = 0;

    bool hasRange() const { return least <= greatest; }
};

/// The field and component that are asked for, or that suggest themselves; nothing when the grid
/// has no field. Throws `Error` when what is asked for is not there.
std::optional<ShownField> findShownField(Grid const& grid, std::string const& step,
                                         std::optional<std::string> const& field,
                                         std::optional<std::string> const& component);

} // namespace Export

#endif
