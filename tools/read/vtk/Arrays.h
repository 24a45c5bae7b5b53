#ifndef READ_VTK_ARRAYS_H
#define READ_VTK_ARRAYS_H

#include <exchange/Field.h>
#include <exchange/RowSelection.h>

#include <cstdint>
#include <string>
#include <vector>

class vtkAbstractArray;
class vtkDataArray;

namespace VtkRead {

/// What an array is called; without a name of its own, "Array 3" for the one of index 2.
std::string arrayName(vtkAbstractArray& array, int index);

/// Some rows of an array, with all components. Integers stay integers; only what no signed 64-bit
/// integer holds becomes a double.
decltype(Exchange::Field::values) valuesOf(vtkDataArray& array, Exchange::RowSelection const& rows);

/// Whether the values are whole numbers by their type.
bool isIntegral(vtkDataArray& array);

/// Whether an array can hold ids: whole numbers, one in each row.
bool isIdArray(vtkDataArray& array);

/// Some rows of such an array.
std::vector<std::int64_t> idsOf(vtkDataArray& array, Exchange::RowSelection const& rows);

/// x, y, z of some rows of an array of three components.
std::vector<double> coordinatesOf(vtkDataArray& array, Exchange::RowSelection const& rows);

} // namespace VtkRead

#endif
