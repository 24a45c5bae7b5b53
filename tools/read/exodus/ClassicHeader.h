#ifndef READ_EXODUS_CLASSICHEADER_H
#define READ_EXODUS_CLASSICHEADER_H

#include <cstdint>
#include <filesystem>
#include <optional>

namespace Exodus {

/// How many bytes a file of one of netCDF's classic formats must have, as its header says; nothing
/// for other files. Raises `Exchange::Error` when the header is not sound.
///
/// The library reads what lies beyond the end of such a file as zeros, without a word, and makes
/// room for as many dimensions and variables as a damaged header says before it looks for them:
/// only this tells in time that a file was cut off or changed.
std::optional<std::uint64_t> classicFileSize(std::filesystem::path const& path);

} // namespace Exodus

#endif
