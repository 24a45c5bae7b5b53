#ifndef VTKEXPORT_PNGFILE_H
#define VTKEXPORT_PNGFILE_H

#include <filesystem>

class vtkImageData;

namespace VtkExport {

/// Throws `std::runtime_error` when the system refuses.
void writePng(vtkImageData& image, std::filesystem::path const& file);

} // namespace VtkExport

#endif
