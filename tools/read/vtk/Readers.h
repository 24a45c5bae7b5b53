#ifndef READ_VTK_READERS_H
#define READ_VTK_READERS_H

#include "FileKind.h"
#include "Input.h"

#include <filesystem>
#include <memory>

namespace VtkRead {

/// Everything that there is to read is selected.
std::unique_ptr<Input> openInput(FileKind kind, std::filesystem::path const& path);

} // namespace VtkRead

#endif
