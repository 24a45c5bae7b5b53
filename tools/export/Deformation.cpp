#include "Deformation.h"

#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Export {

namespace {

// The picture names the factor with three digits. It is rounded to them, so that the one that is
// named is the one that is drawn with.
double rounded(double factor)
{
    if (factor == 0 || !std::isfinite(factor))
        return 0;
    double const unit = std::pow(10, std::floor(std::log10(factor)) - 2);
    return std::round(factor / unit) * unit;
}

bool isKnown(std::array<double, 6> const& row)
{
    return std::isfinite(row[0]) && std::isfinite(row[1]) && std::isfinite(row[2]);
}

vtkDataArray* displacementsOf(vtkUnstructuredGrid& grid)
{
    vtkDataArray* const found = grid.GetPointData()->GetArray("Displacement");
    bool const isUsable = found != nullptr && (found->GetNumberOfComponents() == 3 ||
                                               found->GetNumberOfComponents() == 6);
    return isUsable ? found : nullptr;
}

} // namespace

Deformation::Deformation(vtkUnstructuredGrid& grid, std::optional<double> const& factor)
    : grid_(grid), displacements_(displacementsOf(grid))
{
    if (displacements_ != nullptr)
        factor_ = factor ? *factor : suitableFactor();
}

vtkSmartPointer<vtkPoints> Deformation::points() const
{
    auto moved = vtkSmartPointer<vtkPoints>::New();
    moved->DeepCopy(grid_.GetPoints());
    if (factor_ == 0)
        return moved;
    std::array<double, 6> row = {};
    std::array<double, 3> point = {};
    for (vtkIdType i = 0; i < moved->GetNumberOfPoints(); ++i) {
        displacements_->GetTuple(i, row.data());
        if (!isKnown(row))
            continue;
        moved->GetPoint(i, point.data());
        for (std::size_t axis = 0; axis < point.size(); ++axis)
            point[axis] += factor_ * row[axis];
        moved->SetPoint(i, point.data());
    }
    return moved;
}

double Deformation::suitableFactor() const
{
    constexpr double shownPart = 0.1;
    double const most = largest();
    return most == 0 ? 0 : rounded(shownPart * grid_.GetLength() / most);
}

double Deformation::largest() const
{
    double most = 0;
    std::array<double, 6> row = {};
    for (vtkIdType i = 0; i < displacements_->GetNumberOfTuples(); ++i) {
        displacements_->GetTuple(i, row.data());
        if (isKnown(row))
            most = std::max(most, std::hypot(row[0], row[1], row[2]));
    }
    return most;
}

} // namespace Export
