#ifndef READ_VTK_CELLS_H
#define READ_VTK_CELLS_H

#include <vtkDataSet.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>

namespace VtkRead {

/// Calls `visit(type, point count, points)` for each cell of a mesh, in order.
template <typename Visit>
void forEachCell(vtkDataSet& data, Visit const& visit)
{
    vtkNew<vtkIdList> list;
    for (vtkIdType cell = 0; cell < data.GetNumberOfCells(); ++cell) {
        data.GetCellPoints(cell, list);
        vtkIdType const* const points = list->GetPointer(0);
        visit(data.GetCellType(cell), list->GetNumberOfIds(), points);
    }
}

/// Does that for an unstructured grid, which needs no copy of each cell.
template <typename Visit>
void forEachCell(vtkUnstructuredGrid& data, Visit const& visit)
{
    vtkIdType count = 0;
    vtkIdType const* points = nullptr;
    for (vtkIdType cell = 0; cell < data.GetNumberOfCells(); ++cell) {
        data.GetCellPoints(cell, count, points);
        visit(data.GetCellType(cell), count, points);
    }
}

template <typename Visit>
void visitCells(vtkDataSet& data, Visit const& visit)
{
    if (auto* const grid = vtkUnstructuredGrid::SafeDownCast(&data))
        forEachCell(*grid, visit);
    else
        forEachCell(data, visit);
}

} // namespace VtkRead

#endif
