#ifndef EXPORT_GRIDFIELDS_H
#define EXPORT_GRIDFIELDS_H

#include "Placement.h"
#include "ReadPlan.h"
#include "Warnings.h"

#include <vtkSmartPointer.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

class vtkDataArray;
class vtkDataSetAttributes;
class vtkUnstructuredGrid;

namespace Export {

/// The fields of several shapes on one grid: those that belong to no step, and those of one step.
class GridFields
{
public:
    /// The grid, the model and the warnings must outlive this.
    GridFields(vtkUnstructuredGrid& grid, MoxRead::Model const& model, Warnings& warnings);

    /// Plans to read the fields that belong to no step. The placements must outlive the plan.
    void planConstant(ReadPlan& plan, std::vector<Placement> const& placements);
    /// Plans to read those of a step, and takes those of the last step away.
    void planStep(ReadPlan& plan, std::vector<Placement> const& placements,
                  std::string const& step);

private:
    void planAll(ReadPlan& plan, std::vector<Placement> const& placements, std::string const& step);
    void planOne(ReadPlan& plan, Placement const& placement, MoxRead::Variable const& variable);
    bool fits(Placement const& placement, MoxRead::Variable const& variable);
    vtkDataArray* arrayFor(Placement const& placement, MoxRead::Variable const& variable);
    vtkDataSetAttributes* dataFor(MoxRead::Variable const& variable) const;
    vtkDataArray* addArray(MoxRead::Variable const& variable, std::string const& name);
    void dropStep();

    vtkUnstructuredGrid& grid_;
    MoxRead::Model const& model_;
    Warnings& warnings_;
    /// Which shapes have their values in which array.
    std::set<std::pair<vtkDataArray*, int>> filled_;
    std::set<std::pair<vtkDataSetAttributes*, std::string>> stepArrays_;
    bool isPlanningStep_ = false;
};

} // namespace Export

#endif
