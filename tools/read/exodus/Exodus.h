#ifndef READ_EXODUS_EXODUS_H
#define READ_EXODUS_EXODUS_H

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <filesystem>
#include <memory>

namespace Exodus {

/// Opens an Exodus file; throws `Exchange::Error`.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace Exodus

#endif
