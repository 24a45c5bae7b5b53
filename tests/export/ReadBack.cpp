#include "ReadBack.h"

#include <vtkCellArray.h>
#include <vtkCompositeDataSet.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkStringArray.h>
#include <vtkUnsignedIntArray.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLMultiBlockDataReader.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUtilities.h>

#include <stdexcept>

namespace ReadBack {

namespace {

/// Reads the file, and raises an exception if the reader of that class says it can not.
template <typename Reader, typename Data>
vtkSmartPointer<Data> read(std::filesystem::path const& file)
{
    vtkNew<Reader> reader;
    if (reader->CanReadFile(file.c_str()) == 0)
        throw std::runtime_error("VTK does not know what is in " + file.string());
    reader->SetFileName(file.c_str());
    reader->Update();
    if (reader->GetErrorCode() != 0)
        throw std::runtime_error("VTK can't read " + file.string());
    auto data = vtkSmartPointer<Data>::New();
    data->ShallowCopy(reader->GetOutputDataObject(0));
    return data;
}

template <typename ArrayT>
ArrayT& get(vtkFieldData* data, std::string const& name)
{
    auto* const array = ArrayT::SafeDownCast(data->GetAbstractArray(name.c_str()));
    if (array == nullptr)
        throw std::runtime_error("no such array " + name);
    return *array;
}

template <typename Value, typename ArrayT>
std::vector<Value> valuesOf(ArrayT& array)
{
    std::vector<Value> values;
    for (vtkIdType i = 0; i < array.GetNumberOfValues(); ++i)
        values.push_back(array.GetValue(i));
    return values;
}

} // namespace

vtkSmartPointer<vtkUnstructuredGrid> grid(std::filesystem::path const& file)
{
    return read<vtkXMLUnstructuredGridReader, vtkUnstructuredGrid>(file);
}

vtkSmartPointer<vtkMultiBlockDataSet> blocks(std::filesystem::path const& file)
{
    return read<vtkXMLMultiBlockDataReader, vtkMultiBlockDataSet>(file);
}

std::vector<std::pair<double, std::string>> collection(std::filesystem::path const& file)
{
    vtkSmartPointer<vtkXMLDataElement> root;
    root.TakeReference(vtkXMLUtilities::ReadElementFromFile(file.c_str()));
    if (root == nullptr || std::string(root->GetAttribute("type")) != "Collection")
        throw std::runtime_error("no collection in " + file.string());
    vtkXMLDataElement& list = *root->FindNestedElementWithName("Collection");
    std::vector<std::pair<double, std::string>> entries;
    for (int i = 0; i < list.GetNumberOfNestedElements(); ++i) {
        vtkXMLDataElement& entry = *list.GetNestedElement(i);
        entries.emplace_back(std::stod(entry.GetAttribute("timestep")), entry.GetAttribute("file"));
    }
    return entries;
}

std::vector<float> points(vtkUnstructuredGrid& grid)
{
    return valuesOf<float>(*vtkFloatArray::SafeDownCast(grid.GetPoints()->GetData()));
}

std::vector<vtkIdType> connectivity(vtkUnstructuredGrid& grid)
{
    std::vector<vtkIdType> result;
    for (vtkIdType cell = 0; cell < grid.GetNumberOfCells(); ++cell) {
        vtkNew<vtkIdList> ids;
        grid.GetCellPoints(cell, ids);
        for (vtkIdType i = 0; i < ids->GetNumberOfIds(); ++i)
            result.push_back(ids->GetId(i));
    }
    return result;
}

std::vector<int> cellTypes(vtkUnstructuredGrid& grid)
{
    std::vector<int> types;
    for (vtkIdType cell = 0; cell < grid.GetNumberOfCells(); ++cell)
        types.push_back(grid.GetCellType(cell));
    return types;
}

std::vector<float> floats(vtkFieldData* data, std::string const& name)
{
    return valuesOf<float>(get<vtkFloatArray>(data, name));
}

std::vector<unsigned int> numbers(vtkFieldData* data, std::string const& name)
{
    return valuesOf<unsigned int>(get<vtkUnsignedIntArray>(data, name));
}

std::vector<vtkIdType> ids(vtkFieldData* data, std::string const& name)
{
    std::vector<vtkIdType> result;
    vtkDataArray& array = get<vtkDataArray>(data, name);
    for (vtkIdType i = 0; i < array.GetNumberOfTuples(); ++i)
        result.push_back(static_cast<vtkIdType>(array.GetComponent(i, 0)));
    return result;
}

std::vector<int> integers(vtkFieldData* data, std::string const& name)
{
    return valuesOf<int>(get<vtkIntArray>(data, name));
}

std::vector<std::string> texts(vtkFieldData* data, std::string const& name)
{
    return valuesOf<std::string>(get<vtkStringArray>(data, name));
}

std::string nameOf(vtkMultiBlockDataSet& blocks, unsigned int index)
{
    return blocks.GetMetaData(index)->Get(vtkCompositeDataSet::NAME());
}

} // namespace ReadBack
