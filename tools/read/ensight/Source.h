#ifndef READ_ENSIGHT_SOURCE_H
#define READ_ENSIGHT_SOURCE_H

#include <exchange/Report.h>
#include <exchange/Source.h>

#include <filesystem>
#include <memory>

namespace EnSight {

/// Opens a case of EnSight, Gold or the format before it, with text or binary files. Raises
/// `Exchange::Error`.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace EnSight

#endif
