#include "CellPoints.h"

#include <vtkCellType.h>
#include <vtkDataSet.h>
#include <vtkIdList.h>
#include <vtkNew.h>

#include <cstddef>
#include <utility>

std::vector<vtkIdType> pointsOf(vtkDataSet& grid, vtkIdType cell)
{
    vtkNew<vtkIdList> list;
    grid.GetCellPoints(cell, list);
    std::vector<vtkIdType> points;
    for (vtkIdType i = 0; i < list->GetNumberOfIds(); ++i)
        points.push_back(list->GetId(i));
    int const type = grid.GetCellType(cell);
    if (type == VTK_PIXEL || type == VTK_VOXEL)
        for (std::size_t i = 2; i < points.size(); i += 4)
            std::swap(points[i], points[i + 1]);
    return points;
}
