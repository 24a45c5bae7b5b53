#ifndef VTKREAD_READERS_H
#define VTKREAD_READERS_H

#include "FileKind.h"
#include "Input.h"

#include <vtkAlgorithm.h>
#include <vtkSmartPointer.h>

#include <filesystem>
#include <memory>

namespace VtkRead {

/// The reader for one of VTK's XML files, whatever it holds. Raises `Exchange::Error` when there is
/// no such file.
vtkSmartPointer<vtkAlgorithm> xmlReader(std::filesystem::path const& path);

/// Everything that there is to read is selected.
std::unique_ptr<Input> openInput(FileKind kind, std::filesystem::path const& path);

} // namespace VtkRead

#endif
