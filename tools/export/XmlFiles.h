#ifndef EXPORT_XMLFILES_H
#define EXPORT_XMLFILES_H

#include <filesystem>
#include <string>
#include <vector>

class vtkUnstructuredGrid;
class vtkXMLDataElement;

namespace Export {

/// These throw `Error` when the system refuses, when VTK complains, or when the file is not whole
/// afterwards.
void writeGrid(vtkUnstructuredGrid& grid, std::filesystem::path const& file);

/// A file of VTK that consists of nothing but XML, with an element below its root.
void writeXml(std::string const& type, vtkXMLDataElement& content,
              std::filesystem::path const& file);

struct CollectionEntry
{
    double time = 0;
    /// Relative to the collection.
    std::string file;
};

void writeCollection(std::vector<CollectionEntry> const& entries,
                     std::filesystem::path const& file);

} // namespace Export

#endif
