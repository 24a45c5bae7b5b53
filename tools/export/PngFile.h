#ifndef EXPORT_PNGFILE_H
#define EXPORT_PNGFILE_H

#include <filesystem>

class vtkImageData;

namespace Export {

/// Throws `std::runtime_error` when the system refuses.
void writePng(vtkImageData& image, std::filesystem::path const& file);

} // namespace Export

#endif
