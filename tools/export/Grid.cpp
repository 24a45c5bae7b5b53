#include "Grid.h"

#include <vtkCellData.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkPointData.h>
#include <vtkUnsignedIntArray.h>

#include <algorithm>

namespace Export {

namespace {

constexpr char const* nodeIds = "Node Ids";
constexpr char const* elementIds = "Element IDs";
constexpr char const* shapeNumbers = "Shape";

std::vector<Placement> placementsOf(std::vector<ModelShape const*> const& shapes,
                                    MoxRead::Model const& model, Warnings& warnings)
{
    std::vector<Placement> placements;
    Placement next;
    for (ModelShape const* shape : shapes) {
        next.shape = shape;
        next.mesh = MeshDatasets::of(*shape, model, warnings);
        placements.push_back(next);
        ++next.index;
        next.firstNode += next.mesh.nodeCount;
        next.firstElement += next.mesh.elementCount;
        next.firstEntry += next.mesh.entryCount;
    }
    return placements;
}

bool areUnique(vtkUnsignedIntArray& ids)
{
    std::vector<unsigned int> sorted(ids.GetPointer(0), ids.GetPointer(ids.GetNumberOfValues()));
    std::sort(sorted.begin(), sorted.end());
    return std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
}

// VTK wants its own type of integer for numbers that are unique.
vtkSmartPointer<vtkIdTypeArray> asVtkIds(vtkUnsignedIntArray& ids)
{
    auto result = vtkSmartPointer<vtkIdTypeArray>::New();
    result->SetName(ids.GetName());
    result->SetNumberOfValues(ids.GetNumberOfValues());
    std::copy_n(ids.GetPointer(0), ids.GetNumberOfValues(), result->GetPointer(0));
    return result;
}

void markGlobalIds(vtkDataSetAttributes& data, char const* name)
{
    auto* const ids = vtkArrayDownCast<vtkUnsignedIntArray>(data.GetArray(name));
    if (ids != nullptr && ids->GetNumberOfComponents() == 1 && areUnique(*ids))
        data.SetGlobalIds(asVtkIds(*ids));
}

void addFieldNames(vtkDataSetAttributes& data, std::set<std::string>& names)
{
    for (int i = 0; i < data.GetNumberOfArrays(); ++i)
        names.insert(data.GetArrayName(i));
}

} // namespace

Grid::Grid(std::vector<ModelShape const*> const& shapes, MoxRead::Model const& model,
           Warnings& warnings)
    : placements_(placementsOf(shapes, model, warnings)), mesh_(placements_, model),
      fields_(*grid_, model, warnings)
{
    mesh_.attachTo(*grid_);
    if (placements_.size() > 1)
        addShapeNumbers();
}

void Grid::planMesh(ReadPlan& plan)
{
    mesh_.plan(plan);
    fields_.planConstant(plan, placements_);
}

void Grid::planStep(ReadPlan& plan, std::string const& step)
{
    mesh_.planStep(plan, step);
    fields_.planStep(plan, placements_, step);
}

void Grid::finishMesh()
{
    mesh_.orderNodes();
    markGlobalIds(*grid_->GetPointData(), nodeIds);
    markGlobalIds(*grid_->GetCellData(), elementIds);
}

std::set<std::string> Grid::fieldNames() const
{
    std::set<std::string> names;
    addFieldNames(*grid_->GetPointData(), names);
    addFieldNames(*grid_->GetCellData(), names);
    for (char const* name : {nodeIds, elementIds, shapeNumbers})
        names.erase(name);
    return names;
}

void Grid::addShapeNumbers()
{
    vtkNew<vtkIntArray> numbers;
    numbers->SetName(shapeNumbers);
    numbers->SetNumberOfValues(mesh_.elementCount());
    for (Placement const& placement : placements_)
        std::fill_n(numbers->GetPointer(placement.firstElement), placement.mesh.elementCount,
                    placement.index);
    grid_->GetCellData()->AddArray(numbers);
}

} // namespace Export
