#ifndef MOXREAD_TREELOADER_H
#define MOXREAD_TREELOADER_H

#include "moxread/Container.h"
#include "moxread/KeyStream.h"
#include "moxread/Node.h"

#include <cstdint>
#include <vector>

namespace MoxRead {

/// Reads the tree with all that belongs to its nodes, other than the values of the datasets, and
/// checks every byte of the streams that it is spread over.
class TreeLoader
{
public:
    explicit TreeLoader(Container const& container);

    /// The nodes in the order of their ids: id 1 comes first. To be called once.
    std::vector<Node> load();

private:
    std::uint32_t readNodeCount();
    Node readNode(std::uint32_t id);
    void readFamily(Node& node, std::uint32_t id);
    void readKind(Node& node);
    void readLightPosition(Node& node);
    void readContent(Node& node);
    Group readGroup();
    Geometry readGeometry();

    KeyStream tree_;
    KeyStream light_;
    KeyStream attributes_;
    KeyStream resources_;
};

} // namespace MoxRead

#endif
