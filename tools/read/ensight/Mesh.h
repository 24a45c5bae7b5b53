#ifndef READ_ENSIGHT_MESH_H
#define READ_ENSIGHT_MESH_H

#include <exchange/Part.h>
#include <exchange/RowSelection.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace EnSight {

constexpr std::size_t axes = 3;

/// The elements of one type of a part; "block" are the cells of a structured one.
struct ElementBlock
{
    std::string type;
    /// Number of the block's first element among the elements of the part, from 0.
    std::size_t first = 0;
    std::size_t count = 0;
};

struct MeshPart
{
    /// The number that variables name it by; none of a part that is not in the file.
    static constexpr std::int64_t none = -1;
    std::int64_t number = none;
    /// Nodes of its own, and elements, before some are left out.
    std::size_t nodeCount = 0;
    std::size_t elementCount = 0;
    /// Which of the nodes that parts share it uses.
    std::vector<std::uint32_t> sharedNodes;
    std::vector<ElementBlock> blocks;
    /// Which of the file's elements a model gets.
    Exchange::RowSelection elements;
    /// Released when a model has it.
    Exchange::Part part;

    /// Null when there is none of the type.
    ElementBlock const* find(std::string const& type) const
    {
        auto const block =
            std::find_if(blocks.begin(), blocks.end(),
                         [&](ElementBlock const& each) { return each.type == type; });
        return block == blocks.end() ? nullptr : &*block;
    }
};

/// What has to be known of a mesh to read the values on it.
struct Mesh
{
    std::filesystem::path path;
    /// x, y, z of each of the nodes that parts share, as all do before Gold.
    std::vector<float> sharedCoordinates;
    std::size_t sharedNodeCount = 0;
    std::vector<MeshPart> parts;

    /// Where parts are, by their numbers.
    std::map<std::int64_t, std::size_t> indices;
};

} // namespace EnSight

#endif
