#ifndef MOX_COMMANDS_UNFINISHEDRUN_H
#define MOX_COMMANDS_UNFINISHEDRUN_H

#include "mox/print/UnfinishedFile.h"

#include <optional>
#include <string>

namespace Mox {

/// What a recoverable run has added so far to a model file, or had when it ended. Disturbs no run.
/// \return none where it left nothing beside the file, or nothing that can be read
std::optional<UnfinishedFile> findUnfinishedRun(std::string const& path);

} // namespace Mox

#endif
