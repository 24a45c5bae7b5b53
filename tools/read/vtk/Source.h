#ifndef READ_VTK_SOURCE_H
#define READ_VTK_SOURCE_H

#include "FileKind.h"

#include <exchange/Report.h>
#include <exchange/Source.h>

#include <filesystem>
#include <memory>

namespace VtkRead {

/// Opens a file with the reader that VTK has for its kind. Raises `Exchange::Error`.
std::unique_ptr<Exchange::Source> open(FileKind kind, std::filesystem::path const& path,
                                       Exchange::Report& report);

} // namespace VtkRead

#endif
