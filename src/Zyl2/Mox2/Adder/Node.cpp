#include "Zyl2/Mox2/Adder/Node.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/Helper/Attributes.h"

#include <memory>

namespace Zyl2 {
namespace Mox2 {
namespace Adder {

namespace {

namespace NodeAdderSites = Exception::Sites::NodeAdder;

/// After data was given for an unknown id the cursor stands on no record; adding there would make
/// one up.
void assertCurrentNodeExists(Zyl2Mox::Tree& tree)
{
    static_cast<void>(tree.GetCurrentNode());
}

/// Who adds one shape after the other rarely means the second to be a part of the first one.
void warnBelowGeometry(Zyl2Mox::Tree& tree, std::string const& name)
{
    if (dynamic_cast<Zyl2Mox::Geometry const*>(tree.GetCurrentNode().value) != nullptr)
        Log::warn("Zyl2/Mox2/Adder/Node", BOOST_CURRENT_FUNCTION, __LINE__, "The node \"", name,
                  "\" is added below node ", tree.GetCurrentId(),
                  ", the geometry of a shape: to stand beside that shape it needs the shape's "
                  "group to be current");
}

} // namespace

Node::Node(NodeType type, std::string const& name, Attributes const& attributes)
    : type_(type), name_(name), attributes_(attributes)
{}

void Node::update(Database& database)
{
    database.assertOpenedForWriting();
    database.assertNotEmpty();
    Zyl2Mox::Tree& tree = *database.tree;
    if (tree.GetReqNode(RootId).value == nullptr)
        addRootNode(tree);
    else
        addNonRootNode(tree);
    id_ = tree.GetCurrentId();
    if (type_ == NodeType::Shape && !attributes_.map().empty())
        Log::warn("Zyl2/Mox2/Adder/Node", BOOST_CURRENT_FUNCTION, __LINE__, "The shape \"", name_,
                  "\" was given attributes: shapes carry none, they are dropped");
}

void Node::addRootNode(Zyl2Mox::Tree& tree)
{
    switch (type_) {
    case NodeType::FlaggedRootGroup:
        tree.SetRootGroup(name_, Helper::Attributes::moxAttributeList(attributes_), 1);
        break;
    case NodeType::RootGroup:
    case NodeType::Group:
        tree.SetRootGroup(name_, Helper::Attributes::moxAttributeList(attributes_));
        break;
    case NodeType::Shape:
        tree.SetRootShape(name_);
        break;
    default:
        Exception::raise(NodeAdderSites::RootOfOtherType,
                         Exception::sentence("node \"", name_, "\" of type ",
                                             static_cast<int>(type_), " can't be the root"));
    }
}

void Node::addNonRootNode(Zyl2Mox::Tree& tree)
{
    switch (type_) {
    case NodeType::Group: {
        auto group = std::make_unique<Zyl2Mox::Group>(
            name_, Helper::Attributes::moxAttributeList(attributes_));
        assertCurrentNodeExists(tree);
        warnBelowGeometry(tree, name_);
        tree.AddNode(std::move(group));
        break;
    }
    case NodeType::Shape: {
        auto shape = std::make_unique<Zyl2Mox::Shape>(name_);
        auto geometry = std::make_unique<Zyl2Mox::Geometry>(name_);
        assertCurrentNodeExists(tree);
        warnBelowGeometry(tree, name_);
        tree.AddNode(std::move(shape));
        tree.AddNode(std::move(geometry));
        break;
    }
    default:
        Exception::raise(NodeAdderSites::NodeOfOtherType,
                         Exception::sentence("node \"", name_, "\" of type ",
                                             static_cast<int>(type_), " below node ",
                                             tree.GetCurrentId(),
                                             ": only groups and shapes can be there"));
    }
}

} // namespace Adder
} // namespace Mox2
} // namespace Zyl2
