#ifndef READ_FRD_FRD_H
#define READ_FRD_FRD_H

#include "exchange/Report.h"
#include "exchange/SequentialSource.h"

#include <filesystem>
#include <memory>

namespace Frd {

/// Opens a solver's result file (.frd) and reads its mesh; throws `Exchange::Error`. There is
/// nothing to report in reading: whatever is in such a file has its place in a model.
std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& report);

} // namespace Frd

#endif
