#ifndef EXPORT_BLOCKFILES_H
#define EXPORT_BLOCKFILES_H

#include "Grid.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace Export {

/// Writes blocks that are nested as a model's groups are, the root group being the file itself;
/// each grid is a block below the groups of its first shape. The grids go into files of their own,
/// in a folder beside the file that is named like it without ending.
///
/// VTK's own writer of such files fails at groups and shapes that are empty.
void writeBlocks(MoxRead::Model const& model, std::vector<std::unique_ptr<Grid>> const& grids,
                 std::filesystem::path const& file);

} // namespace Export

#endif
