#include "ElementEdges.h"

#include <vtkCell.h>
#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

namespace Export {

namespace {

/// Lines, each with points of its own.
class Lines
{
public:
    explicit Lines(int piecesPerEdge) : pieces_(piecesPerEdge) {}

    void add(vtkCell& edge)
    {
        vtkIdType const first = edge.GetPointId(0);
        vtkIdType const last = edge.GetPointId(1);
        if (!known_.insert(std::minmax(first, last)).second)
            return;
        int const pieces = edge.IsLinear() ? 1 : pieces_;
        cells_->InsertNextCell(pieces + 1);
        for (int i = 0; i <= pieces; ++i)
            cells_->InsertCellPoint(addPoint(edge, static_cast<double>(i) / pieces));
    }

    vtkSmartPointer<vtkPolyData> get() const
    {
        auto data = vtkSmartPointer<vtkPolyData>::New();
        data->SetPoints(points_);
        data->SetLines(cells_);
        return data;
    }

private:
    vtkIdType addPoint(vtkCell& edge, double place)
    {
        int part = 0;
        std::array<double, 3> const parameters = {place, 0, 0};
        std::array<double, 3> point = {};
        std::vector<double> weights(static_cast<std::size_t>(edge.GetNumberOfPoints()));
        edge.EvaluateLocation(part, parameters.data(), point.data(), weights.data());
        return points_->InsertNextPoint(point.data());
    }

    int pieces_;
    vtkNew<vtkPoints> points_;
    vtkNew<vtkCellArray> cells_;
    /// Edges that were added, by their end points: an edge that elements share is drawn once.
    std::set<std::pair<vtkIdType, vtkIdType>> known_;
};

} // namespace

vtkSmartPointer<vtkPolyData> elementEdges(vtkUnstructuredGrid& grid, int piecesPerEdge)
{
    Lines lines(piecesPerEdge);
    for (vtkIdType i = 0; i < grid.GetNumberOfCells(); ++i) {
        vtkCell* const cell = grid.GetCell(i);
        for (int edge = 0; edge < cell->GetNumberOfEdges(); ++edge)
            lines.add(*cell->GetEdge(edge));
    }
    return lines.get();
}

} // namespace Export
