#ifndef READ_VTK_BLOCKS_H
#define READ_VTK_BLOCKS_H

#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

#include <string>
#include <vector>

class vtkDataObject;

namespace VtkRead {

/// One leaf of what a reader made.
struct Block
{
    std::string name;
    /// Names of the blocks that it is in, from outside in.
    std::vector<std::string> groups;
    /// Null where the reader made nothing of a block that has a name.
    vtkSmartPointer<vtkDataSet> data;
};

/// The leaves in their order. Raises `Exchange::Error` when there is something that has no mesh.
std::vector<Block> blocksOf(vtkDataObject* object);

} // namespace VtkRead

#endif
