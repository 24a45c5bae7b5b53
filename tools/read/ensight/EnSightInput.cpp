#include "EnSightInput.h"

#include "EnSightCheck.h"
#include "read/vtk/Blocks.h"

#include <exchange/Error.h>

#include <vtkCellData.h>
#include <vtkGenericEnSightReader.h>
#include <vtkPointData.h>

#include <algorithm>
#include <string>
#include <utility>

namespace VtkRead {

namespace {

vtkSmartPointer<vtkGenericEnSightReader> readerOf(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<vtkGenericEnSightReader>::New();
    reader->SetCaseFileName(path.c_str());
    reader->ReadAllVariablesOn();
    return reader;
}

/// Complex vectors come as one array of real parts and one of imaginary ones.
bool hasVariable(vtkDataSetAttributes& arrays, std::string const& name)
{
    return arrays.HasArray(name.c_str()) != 0 || (arrays.HasArray((name + "_r").c_str()) != 0 &&
                                                  arrays.HasArray((name + "_i").c_str()) != 0);
}

/// \param dataOf gives the arrays of a block that the variable has to be among
template <typename DataOf>
void requireVariable(std::vector<Block> const& blocks, std::string const& name,
                     DataOf const& dataOf)
{
    bool const isThere = std::any_of(blocks.begin(), blocks.end(), [&](Block const& block) {
        return block.data != nullptr && hasVariable(*dataOf(*block.data), name);
    });
    if (!isThere)
        throw Exchange::Error("The values of the variable '" + name + "' are missing.");
}

} // namespace

EnSightInput::EnSightInput(std::filesystem::path const& path, Exchange::Report& report)
    : EnSightInput(readerOf(path), requireWholeFiles(path, report))
{}

EnSightInput::EnSightInput(vtkSmartPointer<vtkGenericEnSightReader> const& reader,
                           EnSightCase description)
    : PipelineInput(reader), reader_(reader), case_(std::move(description))
{}

vtkSmartPointer<vtkDataObject> EnSightInput::read(std::size_t step)
{
    auto object = PipelineInput::read(step);
    std::vector<Block> const blocks = blocksOf(object);
    for (int i = 0; i < reader_->GetNumberOfPointArrays(); ++i)
        if (std::string const name = reader_->GetPointArrayName(i); isToBeThere(name, step))
            requireVariable(blocks, name, [](vtkDataSet& data) { return data.GetPointData(); });
    for (int i = 0; i < reader_->GetNumberOfCellArrays(); ++i)
        if (std::string const name = reader_->GetCellArrayName(i); isToBeThere(name, step))
            requireVariable(blocks, name, [](vtkDataSet& data) { return data.GetCellData(); });
    return object;
}

bool EnSightInput::isToBeThere(std::string const& variable, std::size_t step) const
{
    return times().empty() || case_.hasValuesAt(variable, times()[step]);
}

} // namespace VtkRead
