#ifndef VTKEXPORT_XMLFILES_H
#define VTKEXPORT_XMLFILES_H

#include "vtkexport/Steps.h"

#include <filesystem>
#include <string>
#include <vector>

class vtkMultiBlockDataSet;
class vtkUnstructuredGrid;

namespace VtkExport {

/// These throw `Error` when VTK complains or when the file is not whole afterwards.
void writeGrid(vtkUnstructuredGrid& grid, std::filesystem::path const& file);

/// Its blocks go into files of their own, in a folder beside it.
void writeBlocks(vtkMultiBlockDataSet& blocks, std::filesystem::path const& file);

struct CollectionEntry
{
    double time = 0;
    /// Relative to the collection.
    std::string file;
};

void writeCollection(std::vector<CollectionEntry> const& entries,
                     std::filesystem::path const& file);

} // namespace VtkExport

#endif
