#include "StepName.h"

#include "SourceAttributes.h"
#include "XmlInput.h"

#include <exchange/Report.h>

#include <vtkXMLDataElement.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLMultiBlockDataReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
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

/// The first block or piece that an element names, or one below it; empty if there is none.
std::string firstFileIn(vtkXMLDataElement& element)
{
    for (char const* const attribute : {"file", "Source"})
        if (char const* const file = element.GetAttribute(attribute))
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

/// Whether the reader is one of these; `without` is then the same without mesh and values.
template <typename Reader>
bool leaveDataOut(vtkXMLReader& reader, vtkSmartPointer<vtkXMLReader>& without)
{
    if (Reader::SafeDownCast(&reader) == nullptr)
        return false;
    without = vtkSmartPointer<FieldDataReader<Reader>>::New();
    return true;
}

template <typename... Readers>
vtkSmartPointer<vtkXMLReader> fieldDataReaderAmong(vtkXMLReader& reader)
{
    vtkSmartPointer<vtkXMLReader> found;
    static_cast<void>((leaveDataOut<Readers>(reader, found) || ...));
    return found;
}

/// Null for what is no mesh, and for what consists of pieces: VTK believes these, and not the file
/// that names them.
vtkSmartPointer<vtkXMLReader> fieldDataReaderFor(vtkXMLReader& reader)
{
    return fieldDataReaderAmong<vtkXMLUnstructuredGridReader, vtkXMLPolyDataReader,
                                vtkXMLImageDataReader, vtkXMLStructuredGridReader,
                                vtkXMLRectilinearGridReader, vtkXMLMultiBlockDataReader>(reader);
}

/// The name that the file itself gives, not one of the files that it refers to.
std::string ownStepName(std::filesystem::path const& file, vtkXMLReader& readerOfFile)
{
    auto const reader = fieldDataReaderFor(readerOfFile);
    if (reader == nullptr)
        return {};
    reader->SetFileName(file.c_str());
    reader->Update();
    Exchange::Report ignored;
    return stepNameAmong(attributesIn(reader->GetOutputDataObject(0), ignored));
}

bool namesFiles(vtkXMLReader& reader)
{
    return reader.IsA("vtkXMLCompositeDataReader") != 0 ||
           reader.IsA("vtkXMLPDataObjectReader") != 0;
}

std::filesystem::path firstFileNamedBy(std::filesystem::path const& file)
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
    auto const reader = xmlReaderOf(file);
    std::string name = ownStepName(file, *reader);
    if (!name.empty() || !namesFiles(*reader))
        return name;
    // VTK reads no blocks or pieces that name files in turn.
    std::filesystem::path const first = firstFileNamedBy(file);
    return first.empty() ? std::string() : ownStepName(first, *xmlReaderOf(first));
}

} // namespace VtkRead
