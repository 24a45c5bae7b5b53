#ifndef VTKEXPORT_BLOCKTREE_H
#define VTKEXPORT_BLOCKTREE_H

#include "vtkexport/Grid.h"

#include <vtkMultiBlockDataSet.h>
#include <vtkSmartPointer.h>

#include <memory>
#include <vector>

namespace VtkExport {

/// A tree of blocks as a model's groups are nested, the root group being the tree itself. Each grid
/// is a block below the groups of its first shape.
vtkSmartPointer<vtkMultiBlockDataSet> blockTreeOf(MoxRead::Model const& model,
                                                  std::vector<std::unique_ptr<Grid>> const& grids);

} // namespace VtkExport

#endif
