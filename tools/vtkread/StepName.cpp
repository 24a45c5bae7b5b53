#include "StepName.h"

#include "Fields.h"
#include "XmlInput.h"

#include <exchange/Report.h>

#include <vtkXMLDataElement.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLReader.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUtilities.h>

#include <algorithm>
#include <iterator>
#include <variant>

namespace VtkRead {

namespace {

using Exchange::Attribute;
using Exchange::AttributeList;

/// The field data that says what a step is called.
constexpr char const* stepNameField = "Step";

/// The first file that is named in an element or below it; empty if there is none.
std::string firstFileIn(vtkXMLDataElement& element)
{
    if (char const* const file = element.GetAttribute("file"))
        return file;
    std::string found;
    for (int i = 0; found.empty() && i < element.GetNumberOfNestedElements(); ++i)
        found = firstFileIn(*element.GetNestedElement(i));
    return found;
}

/// One of VTK's readers that leaves mesh and values out.
template <typename Reader>
class FieldDataReader : public Reader
{
public:
    static FieldDataReader* New()
    {
        auto* const reader = new FieldDataReader;
        reader->InitializeObjectBase();
        return reader;
    }

    FieldDataReader(FieldDataReader const&) = delete;
    FieldDataReader& operator=(FieldDataReader const&) = delete;

protected:
    FieldDataReader() = default;
    ~FieldDataReader() override = default;

    void ReadXMLData() override { this->ReadFieldData(); }
};

/// Null for what is no grid.
vtkSmartPointer<vtkXMLReader> fieldDataReaderFor(vtkXMLReader& reader)
{
    if (reader.IsA("vtkXMLUnstructuredGridReader") != 0)
        return vtkSmartPointer<FieldDataReader<vtkXMLUnstructuredGridReader>>::New();
    if (reader.IsA("vtkXMLPolyDataReader") != 0)
        return vtkSmartPointer<FieldDataReader<vtkXMLPolyDataReader>>::New();
    return nullptr;
}

std::string stepNameInGrid(std::filesystem::path const& file)
{
    auto const reader = fieldDataReaderFor(*xmlReaderOf(file));
    if (reader == nullptr)
        return {};
    reader->SetFileName(file.c_str());
    reader->Update();
    Exchange::Report ignored;
    return stepNameAmong(attributesIn(reader->GetOutputDataObject(0), ignored));
}

bool hasBlocks(vtkXMLReader& reader)
{
    return reader.IsA("vtkXMLCompositeDataReader") != 0;
}

std::filesystem::path firstFileOfBlocks(std::filesystem::path const& file)
{
    auto const root = vtkSmartPointer<vtkXMLDataElement>::Take(
        vtkXMLUtilities::ReadElementFromFile(file.c_str()));
    std::string const first = root == nullptr ? std::string() : firstFileIn(*root);
    return first.empty() ? std::filesystem::path() : file.parent_path() / first;
}

} // namespace

std::string stepNameAmong(AttributeList const& attributes)
{
    for (auto const& [name, value] : attributes)
        if (name == stepNameField && std::holds_alternative<std::string>(value))
            return std::get<std::string>(value);
    return {};
}

AttributeList withoutStepName(AttributeList const& attributes, std::string const& name)
{
    if (name.empty())
        return attributes;
    AttributeList others;
    std::remove_copy(attributes.begin(), attributes.end(), std::back_inserter(others),
                     Attribute(stepNameField, name));
    return others;
}

std::string stepNameIn(std::filesystem::path const& file)
{
    if (!hasBlocks(*xmlReaderOf(file)))
        return stepNameInGrid(file);
    std::filesystem::path const first = firstFileOfBlocks(file);
    return first.empty() ? std::string() : stepNameInGrid(first);
}

} // namespace VtkRead
