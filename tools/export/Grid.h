#ifndef EXPORT_GRID_H
#define EXPORT_GRID_H

#include "GridFields.h"
#include "GridMesh.h"
#include "ModelShape.h"
#include "Placement.h"
#include "ReadPlan.h"
#include "Warnings.h"

#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>

#include <set>
#include <string>
#include <vector>

class vtkDataSetAttributes;

namespace Export {

/// Shapes in one grid, one behind the other, with the fields of one step at a time.
///
/// A field that only some of the shapes have is NaN on the others, or 0 when it holds integers.
class Grid
{
public:
    /// Makes room for the mesh. What is given must outlive the grid.
    Grid(std::vector<ModelShape const*> const& shapes, MoxRead::Model const& model,
         Warnings& warnings);
    Grid(Grid const&) = delete;
    Grid& operator=(Grid const&) = delete;
    ~Grid() = default;

    /// Plans to read the mesh and the fields that belong to no step.
    void planMesh(ReadPlan& plan);
    /// Plans to put the fields of a step in the place of those of the last one.
    void planStep(ReadPlan& plan, std::string const& step);
    /// To be called when the first plan was run: only then it is known which cells are to be turned
    /// and which numbers are unique.
    void finishMesh();

    vtkUnstructuredGrid* get() const { return grid_.Get(); }
    std::vector<Placement> const& placements() const { return placements_; }
    /// Names of the arrays on nodes and elements, those of the mesh left out.
    std::set<std::string> fieldNames() const;

private:
    void addShapeNumbers();

    std::vector<Placement> placements_;
    GridMesh mesh_;
    vtkNew<vtkUnstructuredGrid> grid_;
    GridFields fields_;
};

} // namespace Export

#endif
