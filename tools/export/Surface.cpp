#include "Surface.h"

#include "ElementEdges.h"
#include "StraightLines.h"

#include <vtkCellData.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkFeatureEdges.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyDataNormals.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Export {

namespace {

constexpr double sharpAngle = 30;
/// Each level doubles how finely curved faces are drawn.
constexpr int fineLevel = 2;
constexpr int coarseLevel = 1;
constexpr vtkIdType manyElements = 200000;

unsigned char byteOf(float shape)
{
    return static_cast<unsigned char>(std::lround(255 * std::clamp(shape, 0.0F, 1.0F)));
}

vtkSmartPointer<vtkUnsignedCharArray> shapeColors(Grid const& grid)
{
    auto colors = vtkSmartPointer<vtkUnsignedCharArray>::New();
    colors->SetName("Colors");
    colors->SetNumberOfComponents(3);
    colors->SetNumberOfTuples(grid.get()->GetNumberOfCells());
    for (Placement const& placement : grid.placements()) {
        auto const diffuse = placement.shape->material.value_or(MoxRead::Material()).diffuse;
        unsigned char* to = colors->GetPointer(3 * placement.firstElement);
        for (std::uint32_t i = 0; i < placement.mesh.elementCount; ++i)
            to = std::transform(diffuse.begin(), diffuse.begin() + 3, to, byteOf);
    }
    return colors;
}

int subdivisionLevel(vtkUnstructuredGrid& grid)
{
    return grid.GetNumberOfCells() < manyElements ? fineLevel : coarseLevel;
}

int piecesPerEdge(vtkUnstructuredGrid& grid)
{
    return 1 << subdivisionLevel(grid);
}

} // namespace

Surface::Surface(Grid const& grid, std::optional<ShownField> const& field, vtkPoints* points)
    : shown_(vtkSmartPointer<vtkUnstructuredGrid>::New())
{
    shown_->CopyStructure(grid.get());
    shown_->SetPoints(points);
    if (!field)
        shown_->GetCellData()->AddArray(shapeColors(grid));
    else if (field->isOnNodes)
        shown_->GetPointData()->AddArray(field->values);
    else
        shown_->GetCellData()->AddArray(field->values);
    vtkNew<vtkDataSetSurfaceFilter> filter;
    filter->SetInputData(withStraightLines(*shown_, piecesPerEdge(*shown_)));
    filter->SetNonlinearSubdivisionLevel(subdivisionLevel(*shown_));
    filter->Update();
    outside_ = filter->GetOutput();
}

vtkSmartPointer<vtkPolyData> Surface::faces() const
{
    vtkNew<vtkPolyDataNormals> normals;
    normals->SetInputData(outside_);
    normals->SetFeatureAngle(sharpAngle);
    normals->Update();
    return normals->GetOutput();
}

vtkSmartPointer<vtkPolyData> Surface::borders() const
{
    vtkNew<vtkFeatureEdges> borders;
    borders->SetInputData(outside_);
    borders->SetFeatureAngle(sharpAngle);
    borders->ColoringOff();
    borders->PassLinesOn();
    borders->Update();
    return borders->GetOutput();
}

vtkSmartPointer<vtkPolyData> Surface::edges() const
{
    return elementEdges(*shown_, piecesPerEdge(*shown_));
}

} // namespace Export
