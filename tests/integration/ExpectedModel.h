#ifndef TESTS_INTEGRATION_EXPECTEDMODEL_H
#define TESTS_INTEGRATION_EXPECTEDMODEL_H

#include "integration/ArrayCall.h"
#include "integration/AttributeSet.h"
#include "integration/PropertySet.h"
#include "integration/Refusal.h"
#include "integration/Values.h"

#include <Zyl2/Mox2/NodeType.h>

#include "moxread/Material.h"
#include "moxread/Node.h"
#include "moxread/Variable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Integration {

struct ExpectedVariable
{
    std::string name;
    std::uint32_t variableType = 0;
    std::shared_ptr<Values const> values;
    std::uint64_t position = 0;
    bool vibration = false;
    MoxRead::Attributes attributes;
    bool linked = false;
    MoxRead::VariableReference link;
};

enum class Kind
{
    None,
    Group,
    Shape,
    Geometry
};

struct ExpectedNode
{
    Kind kind = Kind::None;
    std::string name;
    std::uint32_t parent = 0;
    std::vector<std::uint32_t> children;
    /// Of a group.
    MoxRead::Group group;
    /// Of a shape.
    MoxRead::Material material;
    /// Of a geometry.
    std::vector<ExpectedVariable> variables;
};

/// A component path, in its parts.
struct ComponentPath
{
    /// The root's name first; none for an empty path.
    std::vector<std::string> names;
    bool endsInGroup = false;
};

/// What a file has to hold after the same calls were made of an open model. A call that the model
/// has to refuse throws `Refusal`, and what the call had done before stays done. Shares no code
/// with the library.
class ExpectedModel
{
public:
    ExpectedModel();

    unsigned int addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                         AttributeSet const& attributes);
    void setNodeData(unsigned int id, PropertySet const& properties,
                     AttributeSet const& attributes);
    unsigned int addComponent(ComponentPath const& path);
    void addArray(ArrayCall const& call);
    unsigned int getNodeId(std::vector<std::string> const& names);
    unsigned int getNodeId(std::string const& path, std::string const& separator);
    unsigned int moveToParentNode();
    void setCurrentNodeId(unsigned int id);

    std::size_t nodeCount() const { return nodes_.size(); }
    ExpectedNode const& node(std::uint32_t id) const { return nodes_.at(id - 1); }
    /// The variable that holds the values of the given one.
    ExpectedVariable const& resolved(ExpectedVariable const& variable) const;
    std::uint64_t heavyLength() const { return heavyLength_; }

private:
    ExpectedNode& at(std::uint32_t id) { return nodes_.at(id - 1); }
    void fillRoot(Zyl2::Mox2::NodeType type, std::string const& name,
                  AttributeSet const& attributes);
    void requireCurrentNode() const;
    void requireNode(std::uint32_t id) const;
    unsigned int addBelowRoot(Zyl2::Mox2::NodeType type, std::string const& name,
                              AttributeSet const& attributes);
    void addChild(Kind kind, std::string const& name);
    std::uint32_t childOf(std::uint32_t id, std::string const& name) const;
    void moveToOrAdd(Kind kind, std::string const& name);
    MoxRead::VariableReference registerVariable(unsigned int id, ArrayCall const& call,
                                                NamedStep const& step,
                                                std::shared_ptr<Values const> const& values,
                                                std::uint64_t position);
    void link(MoxRead::VariableReference const& target, MoxRead::VariableReference const& source);

    std::vector<ExpectedNode> nodes_;
    /// 0 for none.
    unsigned int current_ = 1;
    std::uint64_t heavyLength_ = 0;
};

} // namespace Integration

#endif
