#ifndef EXPORT_XMLFILES_H
#define EXPORT_XMLFILES_H

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

class vtkUnstructuredGrid;
class vtkXMLDataElement;

namespace Export {

/// These throw `Error` when the system refuses, when VTK complains, or when the file is not whole
/// afterwards.
void writeGrid(vtkUnstructuredGrid& grid, std::filesystem::path const& file);

/// A file of VTK that consists of nothing but XML, with an element below its root.
void writeXml(std::string const& type, vtkXMLDataElement& content,
              std::filesystem::path const& file);

/// A collection of files by time, written as it goes along: it may have more entries than there is
/// memory for.
class CollectionFile
{
public:
    explicit CollectionFile(std::filesystem::path const& file);

    /// \param part number of the file among those of the same time, from 0
    /// \param file relative to the collection
    void add(double time, std::size_t part, std::string const& file);
    /// To be called once.
    void finish();

private:
    std::ofstream stream_;
};

} // namespace Export

#endif
