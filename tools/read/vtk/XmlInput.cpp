#include "XmlInput.h"

#include "PipelineInput.h"

#include <exchange/Error.h>

#include <vtkNew.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLDataParser.h>
#include <vtkXMLGenericDataObjectReader.h>
#include <vtkXMLReader.h>

#include <utility>

namespace VtkRead {

namespace {

using Exchange::Error;

/// A file of several steps tells their times in the element of its dataset, of which its reader
/// only tells the numbers.
std::vector<double> timesIn(std::filesystem::path const& path, std::vector<double> const& numbers)
{
    if (numbers.empty())
        return {};
    vtkNew<vtkXMLDataParser> parser;
    parser->SetFileName(path.c_str());
    vtkXMLDataElement* const root = parser->Parse() == 0 ? nullptr : parser->GetRootElement();
    if (root == nullptr || root->GetNumberOfNestedElements() == 0)
        return numbers;
    std::vector<double> times(numbers.size());
    int const count = static_cast<int>(times.size());
    bool const hasAll =
        root->GetNestedElement(0)->GetVectorAttribute("TimeValues", count, times.data()) == count;
    return hasAll ? times : numbers;
}

} // namespace

vtkSmartPointer<vtkXMLReader> xmlReaderOf(std::filesystem::path const& path)
{
    if (!std::filesystem::is_regular_file(path))
        throw Error("There is no file '" + path.string() + "'.");
    bool isParallel = false;
    vtkNew<vtkXMLGenericDataObjectReader> generic;
    int const type = generic->ReadOutputType(path.c_str(), isParallel);
    // The general reader itself doesn't survive a second step.
    vtkSmartPointer<vtkXMLReader> reader =
        vtkXMLGenericDataObjectReader::CreateReader(type, isParallel);
    if (reader == nullptr)
        throw Error("'" + path.filename().string() + "' is no file of VTK with a mesh.");
    reader->SetFileName(path.c_str());
    return reader;
}

XmlInput::XmlInput(std::filesystem::path const& path)
    : path_(path), fresh_(std::make_unique<PipelineInput>(xmlReaderOf(path))),
      times_(timesIn(path, fresh_->times()))
{}

vtkSmartPointer<vtkDataObject> XmlInput::read(std::size_t step)
{
    std::unique_ptr<Input> const reader =
        fresh_ ? std::move(fresh_) : std::make_unique<PipelineInput>(xmlReaderOf(path_));
    return reader->read(step);
}

} // namespace VtkRead
