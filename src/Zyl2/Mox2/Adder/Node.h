#ifndef ZYL2_MOX2_ADDER_NODE_H
#define ZYL2_MOX2_ADDER_NODE_H

#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/NodeType.h>

#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Mox2/Database.h"

#include <string>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

/// Id of the node that every model begins with.
constexpr unsigned int RootId = 1;

/// Adds one node below the current one, or fills the root.
class Node : public Base::Modifier<Database>
{
public:
    Node(NodeType type, std::string const& name, Attributes const& attributes);

    /// \throws InvalidObjectState "File not open."; "File not opened in write mode"
    /// \throws InvalidArguments the node type or an attribute doesn't fit
    /// \throws KeyNotFound the current node is none
    void update(Database& database) override;

    /// Fills the root, which becomes current.
    void addRootNode(Zyl2Mox::Tree& tree);

    /// Adds a group, or a shape and its geometry; the group or the geometry becomes current.
    void addNonRootNode(Zyl2Mox::Tree& tree);

    /// Id of the node that `update` made.
    unsigned int getId() const { return id_; }

    NodeType getType() const { return type_; }
    std::string const& getName() const { return name_; }
    Attributes const& getAttributes() const { return attributes_; }

private:
    NodeType type_;
    std::string name_;
    Attributes attributes_;
    unsigned int id_ = 0;
};

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2

#endif
