#include "XmlFiles.h"

#include "Error.h"
#include "EscapedNames.h"
#include "vtk/Messages.h"

#include <vtkErrorCode.h>
#include <vtkIndent.h>
#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkXMLUtilities.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace Export {

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

void configure(vtkXMLWriter& writer, std::filesystem::path const& file)
{
    writer.SetFileName(file.c_str());
    writer.SetDataModeToAppended();
    writer.EncodeAppendedDataOff();
    writer.SetHeaderTypeToUInt64();
}

void write(vtkXMLWriter& writer)
{
    Vtk::Messages const messages;
    errno = 0;
    bool const isWritten = writer.Write() != 0;
    int const systemError = errno;
    if (writer.GetErrorCode() == vtkErrorCode::OutOfDiskSpaceError)
        failWith(systemError == 0 ? "there is no room for it" : std::strerror(systemError));
    if (writer.GetErrorCode() != vtkErrorCode::NoError)
        failWith(vtkErrorCode::GetStringFromErrorCode(writer.GetErrorCode()));
    messages.raiseError<Error>();
    if (!isWritten)
        failWith("VTK gives no reason");
}

std::string shortestText(double value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

} // namespace

void writeGrid(vtkUnstructuredGrid& grid, std::filesystem::path const& file)
{
    EscapedNames const names(grid);
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    configure(*writer, file);
    writer->SetInputData(&grid);
    write(*writer);
    checkWhole(file);
}

void writeXml(std::string const& type, vtkXMLDataElement& content,
              std::filesystem::path const& file)
{
    vtkNew<vtkXMLDataElement> root;
    root->SetName("VTKFile");
    root->SetAttribute("type", type.c_str());
    root->SetAttribute("version", "1.0");
    root->SetAttribute("byte_order", "LittleEndian");
    root->AddNestedElement(&content);
    std::ofstream stream(file, std::ios::binary);
    stream << "<?xml version=\"1.0\"?>\n";
    vtkXMLUtilities::FlattenElement(root, stream);
    stream.close();
    if (!stream)
        failWith(std::strerror(errno));
}

CollectionFile::CollectionFile(std::filesystem::path const& file) : stream_(file, std::ios::binary)
{
    stream_ << "<?xml version=\"1.0\"?>\n"
            << "<VTKFile type=\"Collection\" version=\"1.0\" byte_order=\"LittleEndian\">\n"
            << "  <Collection>\n";
}

void CollectionFile::add(double time, std::size_t part, std::string const& file)
{
    vtkNew<vtkXMLDataElement> element;
    element->SetName("DataSet");
    element->SetAttribute("timestep", shortestText(time).c_str());
    element->SetAttribute("group", "");
    element->SetAttribute("part", std::to_string(part).c_str());
    element->SetAttribute("file", file.c_str());
    vtkIndent indent = vtkIndent().GetNextIndent().GetNextIndent();
    vtkXMLUtilities::FlattenElement(element, stream_, &indent);
}

void CollectionFile::finish()
{
    stream_ << "  </Collection>\n</VTKFile>\n";
    stream_.close();
    if (!stream_)
        failWith(std::strerror(errno));
}

} // namespace Export
