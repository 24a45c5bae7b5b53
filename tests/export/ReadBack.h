#ifndef TESTS_EXPORT_READBACK_H
#define TESTS_EXPORT_READBACK_H

#include <vtkDataSetAttributes.h>
#include <vtkFieldData.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// Files of VTK as VTK's own readers see them. A file that they complain about raises an exception.
namespace ReadBack {

vtkSmartPointer<vtkUnstructuredGrid> grid(std::filesystem::path const& file);
vtkSmartPointer<vtkMultiBlockDataSet> blocks(std::filesystem::path const& file);

/// Times and files of a collection, in its order.
std::vector<std::pair<double, std::string>> collection(std::filesystem::path const& file);

/// The coordinates of all points, three for each.
std::vector<float> points(vtkUnstructuredGrid& grid);
std::vector<vtkIdType> connectivity(vtkUnstructuredGrid& grid);
std::vector<int> cellTypes(vtkUnstructuredGrid& grid);

/// The values of an array. Each raises an exception if there is none of that name and type.
std::vector<float> floats(vtkFieldData* data, std::string const& name);
std::vector<unsigned int> numbers(vtkFieldData* data, std::string const& name);
std::vector<vtkIdType> ids(vtkFieldData* data, std::string const& name);
std::vector<int> integers(vtkFieldData* data, std::string const& name);
std::vector<std::string> texts(vtkFieldData* data, std::string const& name);

std::string nameOf(vtkMultiBlockDataSet& blocks, unsigned int index);

} // namespace ReadBack

#endif
