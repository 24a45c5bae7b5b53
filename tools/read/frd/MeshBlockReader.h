#ifndef READ_FRD_MESHBLOCKREADER_H
#define READ_FRD_MESHBLOCKREADER_H

#include "BlockFormat.h"
#include "ByteStream.h"
#include "Columns.h"
#include "Mesh.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Frd {

/// Reads the node block and the element block of a result file.
class MeshBlockReader
{
public:
    MeshBlockReader(ByteStream& stream, Mesh& mesh) : stream_(stream), mesh_(mesh) {}

    /// Reads what follows the 2C record `head`.
    void readNodes(std::string const& head);

    /// Reads what follows the 3C record `head`.
    void readElements(std::string const& head);

private:
    struct BlockHead
    {
        /// Unknown where the solver leaves it blank, which only lines can do without.
        std::optional<std::uint64_t> count;
        BlockFormat format;
    };
    struct ElementHead
    {
        std::int64_t id;
        std::int64_t type;
        std::int64_t group;
        std::int64_t material;
    };

    BlockHead parseHead(std::string const& head);
    void readNodeLines(BlockHead const& head);
    void readNodeRecords(BlockHead const& head);
    void addNode(std::int64_t id, std::array<double, 3> const& coordinates);
    void checkCountOf(char const* what, std::size_t found, BlockHead const& head);

    void readElementLines(BlockHead const& head);
    void readElementNodeLines(BlockFormat const& format, std::size_t nodeCount);
    void readElementRecords(BlockHead const& head);
    void readElementRecord();
    bool hasElementRecord();
    std::int64_t parseMaterial(Columns& columns);
    Topology const& typeOf(ElementHead const& element);
    void takeElementNode(std::int64_t nodeId);
    void addElement(ElementHead const& element);

    std::uint32_t checkedId(std::int64_t id, char const* what);

    ByteStream& stream_;
    Mesh& mesh_;
    std::vector<std::uint32_t> elementNodes_;
};

} // namespace Frd

#endif
