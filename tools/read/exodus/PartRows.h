#ifndef READ_EXODUS_PARTROWS_H
#define READ_EXODUS_PARTROWS_H

#include "Topology.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Exodus {

/// Which of the file's nodes and elements became one part: those of an element block.
struct PartRows
{
    std::int64_t id = 0;
    std::string name;
    std::string topology;
    Topology elements;
    std::size_t elementCount = 0;
    /// Row of its first element among all elements of the file.
    std::size_t firstElement = 0;
    /// Rows of its nodes among all nodes of the file, ascending.
    std::vector<std::uint32_t> nodes;
    /// Whether the elements are of a type that a model can't hold.
    bool isLeftOut = false;
};

/// The parts of a file. The first ones are the blocks, in the file's order; a last one has the
/// nodes that no element uses, if there are any.
struct MeshRows
{
    std::vector<PartRows> blocks;
    std::vector<std::uint32_t> unusedNodes;

    std::size_t partCount() const { return blocks.size() + (unusedNodes.empty() ? 0 : 1); }
    std::vector<std::uint32_t> const& nodesOfPart(std::size_t part) const
    {
        return part < blocks.size() ? blocks[part].nodes : unusedNodes;
    }
};

} // namespace Exodus

#endif
