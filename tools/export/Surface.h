#ifndef EXPORT_SURFACE_H
#define EXPORT_SURFACE_H

#include "Grid.h"
#include "ShownField.h"

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include <optional>

class vtkPoints;

namespace Export {

/// What is to be seen of a grid from outside. Faces and lines of second order are curved.
class Surface
{
public:
    /// With values "Shown" of a field, or without one, cell colours "Colors" of the shapes.
    Surface(Grid const& grid, std::optional<ShownField> const& field, vtkPoints* points);

    bool isEmpty() const { return outside_->GetNumberOfCells() == 0; }
    vtkSmartPointer<vtkPolyData> faces() const;
    /// Borders and sharp edges.
    vtkSmartPointer<vtkPolyData> borders() const;
    /// Edges of the elements.
    vtkSmartPointer<vtkPolyData> edges() const;

private:
    vtkSmartPointer<vtkUnstructuredGrid> shown_;
    vtkSmartPointer<vtkPolyData> outside_;
};

} // namespace Export

#endif
