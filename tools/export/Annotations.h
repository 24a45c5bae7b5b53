#ifndef EXPORT_ANNOTATIONS_H
#define EXPORT_ANNOTATIONS_H

#include "Grid.h"
#include "Steps.h"

#include <vtkFieldData.h>
#include <vtkNew.h>

namespace Export {

/// Adds the attributes of a model's groups to field data: `Root: Title`, `Group body/door:
/// Supplier`.
void addGroupAttributes(vtkFieldData& data, MoxRead::Model const& model);

/// What is said of a grid's shapes in its field data, with a row for each shape.
class Annotations
{
public:
    /// Adds names, groups, materials, the attributes of the groups that the shapes are in (`Root:
    /// Title`, `Group body/door: Supplier`) and of datasets that belong to no step.
    explicit Annotations(Grid const& grid);

    /// Puts the step's name, its time and the attributes of its datasets in the place of those of
    /// the last step: `Step: Increment` where all datasets agree, else `Dataset STRESS: Unit`.
    void showStep(Step const& step);

private:
    Grid const& grid_;
    /// All that stays from step to step.
    vtkNew<vtkFieldData> constant_;
};

} // namespace Export

#endif
