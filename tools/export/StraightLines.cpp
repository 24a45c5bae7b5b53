#include "StraightLines.h"

#include <vtkCell.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>

#include <array>

namespace Export {

namespace {

bool isCurvedLine(int cellType)
{
    return cellType == VTK_QUADRATIC_EDGE || cellType == VTK_CUBIC_LINE;
}

class Straightening
{
public:
    Straightening(vtkUnstructuredGrid& from, int piecesPerLine)
        : from_(from), pieces_(piecesPerLine), values_(*to_->GetPointData())
    {
        points_->DeepCopy(from.GetPoints());
        values_.InterpolateAllocate(from.GetPointData(), from.GetNumberOfPoints());
        for (vtkIdType point = 0; point < from.GetNumberOfPoints(); ++point)
            values_.CopyData(from.GetPointData(), point, point);
    }

    vtkSmartPointer<vtkUnstructuredGrid> run()
    {
        to_->Allocate(from_.GetNumberOfCells());
        vtkNew<vtkIdList> points;
        for (vtkIdType i = 0; i < from_.GetNumberOfCells(); ++i) {
            if (isCurvedLine(from_.GetCellType(i))) {
                addPieces(*from_.GetCell(i));
            } else {
                from_.GetCellPoints(i, points);
                to_->InsertNextCell(from_.GetCellType(i), points);
            }
        }
        to_->SetPoints(points_);
        to_->GetCellData()->ShallowCopy(from_.GetCellData());
        return to_;
    }

private:
    void addPieces(vtkCell& line)
    {
        vtkNew<vtkIdList> points;
        points->InsertNextId(line.GetPointId(0));
        for (int i = 1; i < pieces_; ++i)
            points->InsertNextId(addPoint(line, static_cast<double>(i) / pieces_));
        points->InsertNextId(line.GetPointId(1));
        to_->InsertNextCell(VTK_POLY_LINE, points);
    }

    /// \param place from 0 to 1
    vtkIdType addPoint(vtkCell& line, double place)
    {
        bool const isCubic = line.GetCellType() == VTK_CUBIC_LINE;
        std::array<double, 3> const parameters = {isCubic ? 2 * place - 1 : place, 0, 0};
        std::array<double, 3> point = {};
        std::array<double, 4> weights = {};
        int part = 0;
        line.EvaluateLocation(part, parameters.data(), point.data(), weights.data());
        vtkIdType const id = points_->InsertNextPoint(point.data());
        values_.InterpolatePoint(from_.GetPointData(), id, line.GetPointIds(), weights.data());
        return id;
    }

    vtkUnstructuredGrid& from_;
    int pieces_;
    vtkSmartPointer<vtkUnstructuredGrid> to_ = vtkSmartPointer<vtkUnstructuredGrid>::New();
    vtkPointData& values_;
    vtkNew<vtkPoints> points_;
};

} // namespace

vtkSmartPointer<vtkUnstructuredGrid> withStraightLines(vtkUnstructuredGrid& grid, int piecesPerLine)
{
    for (vtkIdType i = 0; i < grid.GetNumberOfCells(); ++i)
        if (isCurvedLine(grid.GetCellType(i)))
            return Straightening(grid, piecesPerLine).run();
    return &grid;
}

} // namespace Export
