#ifndef EXPORT_DEFORMATION_H
#define EXPORT_DEFORMATION_H

#include <vtkPoints.h>
#include <vtkSmartPointer.h>

#include <optional>

class vtkDataArray;
class vtkUnstructuredGrid;

namespace Export {

/// Where the nodes of a grid are when their displacements are magnified.
class Deformation
{
public:
    /// Without a factor, the largest displacement becomes a tenth of the diagonal of the box around
    /// the grid; without displacements, the factor is 0.
    Deformation(vtkUnstructuredGrid& grid, std::optional<double> const& factor);

    double factor() const { return factor_; }
    /// A node whose displacement is not known stays where it is.
    vtkSmartPointer<vtkPoints> points() const;

private:
    double suitableFactor() const;
    double largest() const;

    vtkUnstructuredGrid& grid_;
    vtkDataArray* displacements_;
    double factor_ = 0;
};

} // namespace Export

#endif
