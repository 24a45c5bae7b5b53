#include "vtkexport/XmlFiles.h"

#include "vtkexport/Error.h"
#include "vtkexport/VtkMessages.h"

#include <vtkErrorCode.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLMultiBlockDataWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkXMLUtilities.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>

namespace VtkExport {

namespace {

constexpr char const* lastTag = "</VTKFile>";

[[noreturn]] void failWith(std::string const& reason)
{
    throw Error("The file cannot be written: " + reason + ".");
}

// VTK does not notice when the last bytes of a file find no room.
bool isWhole(std::filesystem::path const& file)
{
    std::array<char, 16> end = {};
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(-static_cast<std::streamoff>(end.size()), std::ios::end);
    stream.read(end.data(), end.size());
    std::string_view const text(end.data(), static_cast<std::size_t>(stream.gcount()));
    return text.find(lastTag) != std::string_view::npos;
}

void checkWhole(std::filesystem::path const& file)
{
    if (!isWhole(file))
        failWith("it is not whole, as on a full disk");
}

void checkFolder(std::filesystem::path const& folder)
{
    std::error_code ignored;
    for (auto const& entry : std::filesystem::directory_iterator(folder, ignored))
        checkWhole(entry.path());
}

void configure(vtkXMLWriter& writer, std::filesystem::path const& file)
{
    writer.SetFileName(file.c_str());
    writer.SetDataModeToAppended();
    writer.EncodeAppendedDataOff();
    writer.SetHeaderTypeToUInt64();
}

void write(vtkXMLWriter& writer)
{
    VtkMessages const messages;
    errno = 0;
    bool const isWritten = writer.Write() != 0;
    int const systemError = errno;
    if (writer.GetErrorCode() == vtkErrorCode::OutOfDiskSpaceError)
        failWith(systemError == 0 ? "there is no room for it" : std::strerror(systemError));
    if (writer.GetErrorCode() != vtkErrorCode::NoError)
        failWith(vtkErrorCode::GetStringFromErrorCode(writer.GetErrorCode()));
    messages.check();
    if (!isWritten)
        failWith("VTK gives no reason");
}

std::string shortestText(double value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

void addEntry(vtkXMLDataElement& collection, CollectionEntry const& entry)
{
    vtkNew<vtkXMLDataElement> element;
    element->SetName("DataSet");
    element->SetAttribute("timestep", shortestText(entry.time).c_str());
    element->SetAttribute("group", "");
    element->SetAttribute("part", "0");
    element->SetAttribute("file", entry.file.c_str());
    collection.AddNestedElement(element);
}

} // namespace

void writeGrid(vtkUnstructuredGrid& grid, std::filesystem::path const& file)
{
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    configure(*writer, file);
    writer->SetInputData(&grid);
    write(*writer);
    checkWhole(file);
}

void writeBlocks(vtkMultiBlockDataSet& blocks, std::filesystem::path const& file)
{
    vtkNew<vtkXMLMultiBlockDataWriter> writer;
    configure(*writer, file);
    writer->SetInputData(&blocks);
    write(*writer);
    checkWhole(file);
    checkFolder(std::filesystem::path(file).replace_extension());
}

void writeCollection(std::vector<CollectionEntry> const& entries, std::filesystem::path const& file)
{
    vtkNew<vtkXMLDataElement> collection;
    collection->SetName("Collection");
    for (CollectionEntry const& entry : entries)
        addEntry(*collection, entry);
    vtkNew<vtkXMLDataElement> root;
    root->SetName("VTKFile");
    root->SetAttribute("type", "Collection");
    root->SetAttribute("version", "1.0");
    root->SetAttribute("byte_order", "LittleEndian");
    root->AddNestedElement(collection);
    std::ofstream stream(file, std::ios::binary);
    stream << "<?xml version=\"1.0\"?>\n";
    vtkXMLUtilities::FlattenElement(root, stream);
    stream.close();
    if (!stream)
        failWith("there is no room for it");
}

} // namespace VtkExport
