#ifndef EXPORT_GRIDMESH_H
#define EXPORT_GRIDMESH_H

#include "Placement.h"
#include "ReadPlan.h"

#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkUnsignedCharArray.h>

#include <map>
#include <string>
#include <vector>

class vtkUnstructuredGrid;

namespace Export {

/// Nodes and elements of several shapes in one grid.
class GridMesh
{
public:
    /// Makes room. The placements must outlive this.
    GridMesh(std::vector<Placement> const& placements, MoxRead::Model const& model);

    std::int64_t nodeCount() const { return nodeCount_; }
    std::int64_t elementCount() const { return elementCount_; }

    /// Plans to read all that belongs to no step.
    void plan(ReadPlan& plan);
    /// Plans to move the nodes where they are in a step, should they have moved.
    void planStep(ReadPlan& plan, std::string const& step);
    /// To be called when the first plan was run: turns the nodes of the elements into the order of
    /// VTK's cells.
    void orderNodes();
    /// Gives the grid nodes and elements, whose values come when they are read.
    void attachTo(vtkUnstructuredGrid& grid);

private:
    void makeRoom();
    void planCoordinates(ReadPlan& plan, Placement const& placement,
                         MoxRead::Variable const& coordinates);
    void planElements(ReadPlan& plan, Placement const& placement);
    void takeCoordinates(Placement const& placement, MoxRead::Dataset const& dataset);
    void takeConnectivity(Placement const& placement, MoxRead::Dataset const& dataset);
    void takePolylength(Placement const& placement, MoxRead::Dataset const& dataset);
    void makeVertices(Placement const& placement);

    std::vector<Placement> const& placements_;
    MoxRead::Model const& model_;
    std::int64_t nodeCount_ = 0;
    std::int64_t elementCount_ = 0;
    std::int64_t entryCount_ = 0;
    vtkNew<vtkFloatArray> coordinates_;
    vtkNew<vtkCellArray> cells_;
    vtkNew<vtkUnsignedCharArray> types_;
    /// The dataset whose values stand in `coordinates_`, by the shape's index.
    std::map<int, MoxRead::Variable const*> shown_;
};

} // namespace Export

#endif
