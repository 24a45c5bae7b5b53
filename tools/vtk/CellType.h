#ifndef VTK_CELLTYPE_H
#define VTK_CELLTYPE_H

#include <exchange/ElementType.h>

#include <cstddef>
#include <vector>

namespace Vtk {

/// A type of VTK's cells that a model has elements for, with the order of its points: the one table
/// that files are read and written by.
struct CellType
{
    /// VTK's number of the type, one of vtkCellType.h.
    int number = 0;
    /// How many points such a cell has; 0 for any, as the element says. The same number of a type
    /// whose order may be chosen is another element for each number of points.
    std::size_t pointCount = 0;
    Exchange::ElementType const* element = nullptr;
    /// For each node of the element, which point of the cell it is; empty when the order is the
    /// same.
    std::vector<std::size_t> order;

    /// The type of a cell with so many points, or null when a model has no element for it.
    static CellType const* find(int number, std::size_t pointCount);

    /// The type that an element is written as, or null when VTK has none for it. Several types may
    /// be read as the same element.
    static CellType const* of(Exchange::ElementType const& element);
};

} // namespace Vtk

#endif
