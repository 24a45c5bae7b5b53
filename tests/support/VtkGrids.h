#ifndef TESTS_SUPPORT_VTKGRIDS_H
#define TESTS_SUPPORT_VTKGRIDS_H

#include <vtkAOSDataArrayTemplate.h>
#include <vtkCellData.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace Support {

/// A cell of a grid: its type and its points.
struct Cell
{
    int type;
    std::vector<vtkIdType> points;
};

/// Points on a wound line, so that no two have a coordinate in common.
inline vtkSmartPointer<vtkPoints> somePoints(int count, double shift = 0)
{
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetDataTypeToDouble();
    for (int i = 0; i < count; ++i)
        points->InsertNextPoint(0.1 * i + shift, i * i / 7.0, 1.0 / (i + 1));
    return points;
}

inline vtkSmartPointer<vtkUnstructuredGrid> gridOf(int pointCount, std::vector<Cell> const& cells,
                                                   double shift = 0)
{
    auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
    grid->SetPoints(somePoints(pointCount, shift));
    grid->Allocate(static_cast<vtkIdType>(cells.size()));
    for (Cell const& cell : cells)
        grid->InsertNextCell(cell.type, static_cast<vtkIdType>(cell.points.size()),
                             cell.points.data());
    return grid;
}

/// A cell over the first points of a grid.
inline Cell cellOver(int type, int count)
{
    Cell cell{type, {}};
    for (int i = 0; i < count; ++i)
        cell.points.push_back(i);
    return cell;
}

template <typename Array>
vtkSmartPointer<Array> arrayOf(std::string const& name, int components,
                               std::vector<typename Array::ValueType> const& values)
{
    auto array = vtkSmartPointer<Array>::New();
    array->SetName(name.c_str());
    array->SetNumberOfComponents(components);
    for (auto const& value : values)
        array->InsertNextValue(value);
    return array;
}

/// Writes any object with the given writer of VTK.
template <typename Writer>
std::filesystem::path writeWith(std::filesystem::path const& path, vtkDataObject* object)
{
    auto writer = vtkSmartPointer<Writer>::New();
    writer->SetFileName(path.c_str());
    writer->SetInputDataObject(object);
    writer->Write();
    return path;
}

} // namespace Support

#endif
