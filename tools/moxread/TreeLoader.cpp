// Stream "Mox Tree":
//
//   uint32  number of nodes
//   ...     the nodes in the order of their ids, from 1
//
// Node:
//
//   uint32  id
//   uint32  id of the parent           (0 for the root)
//   uint32  id of the previous sibling (0 for none, as below)
//   uint32  id of the next sibling
//   uint32  id of the first child
//   uint32  id of the last child
//   string  name
//   string  type      "Group"  "Shape"  "Geometry"  ""
//   string  version   "0.4"    "0.2"    "0.7"       ""
//   uint64  position in "Light Data" where the content of the node begins
//
// Content of a group:    41 bytes in "Light Data", an attribute list in "Attributes"
//
//    0  12  translation, 3 floats
//   12  16  rotation: axis and angle, 4 floats
//   28  12  scale, 3 floats
//   40   1  flag
//
// Content of a shape:    nothing in "Light Data", a material in "Resources" (Material.cpp)
//
// Content of a geometry: in "Light Data" a uint32 number of variables, then their headers
//                        (Variable.cpp); an attribute list for each of them in "Attributes"

#include "moxread/TreeLoader.h"

#include "moxread/FormatError.h"
#include "moxread/Text.h"

#include <string>
#include <unordered_set>
#include <utility>

namespace MoxRead {

namespace {

constexpr std::size_t leastNodeSize = 44;
constexpr std::size_t leastVariableSize = 18;

template <std::size_t count>
std::array<float, count> readFloats(KeyStream& stream)
{
    std::array<float, count> values = {};
    for (float& value : values)
        value = stream.readFloat();
    return values;
}

void requireId(std::uint32_t found, std::uint32_t expected, std::uint32_t nodeId,
               char const* relation)
{
    if (found != expected) {
        throw FormatError("node " + std::to_string(nodeId) + ": " + relation + " is " +
                          std::to_string(found) + ", not " + std::to_string(expected));
    }
}

// The parents alone determine all other relations, because ids are given in the order in which
// nodes are added. That a parent has a lower id than its children also rules out cycles.
void checkFamilies(std::vector<Node> const& nodes)
{
    std::vector<std::uint32_t> firstChild(nodes.size() + 1);
    std::vector<std::uint32_t> lastChild(nodes.size() + 1);
    std::vector<std::uint32_t> nextSibling(nodes.size() + 1);
    for (Node const& node : nodes) {
        std::uint32_t const previous = lastChild[node.parent];
        requireId(node.previousSibling, previous, node.id, "previous sibling");
        (previous == 0 ? firstChild[node.parent] : nextSibling[previous]) = node.id;
        lastChild[node.parent] = node.id;
    }
    for (Node const& node : nodes) {
        requireId(node.nextSibling, nextSibling[node.id], node.id, "next sibling");
        requireId(node.firstChild, firstChild[node.id], node.id, "first child");
        requireId(node.lastChild, lastChild[node.id], node.id, "last child");
    }
}

// Below the root, no node is added without its content.
void checkType(Node const& node, std::size_t count)
{
    if (node.type.empty() && count > 1)
        throw FormatError("a node that is not alone has no type");
}

void checkGeometry(Node const& geometry, std::vector<Node> const& nodes)
{
    Node const* const parent = geometry.parent == 0 ? nullptr : &nodes[geometry.parent - 1];
    if (parent == nullptr || parent->shape() == nullptr || parent->parent == 0)
        throw FormatError("the parent of a geometry is no shape below the root");
    if (geometry.name != parent->name) {
        throw FormatError("the name of the geometry is " + quoted(geometry.name) + ", not " +
                          quoted(parent->name) + " as that of its shape");
    }
}

void checkKinds(std::vector<Node> const& nodes)
{
    // Whether the node of that id has a geometry.
    std::vector<bool> hasGeometry(nodes.size() + 1);
    for (Node const& node : nodes) {
        inContext([&] { return "node " + std::to_string(node.id); },
                  [&] {
                      checkType(node, nodes.size());
                      if (node.geometry() != nullptr) {
                          checkGeometry(node, nodes);
                          if (hasGeometry[node.parent])
                              throw FormatError("its shape has another geometry before");
                          hasGeometry[node.parent] = true;
                      }
                      if (node.group() != nullptr && node.group()->flag && node.parent != 0)
                          throw FormatError("the flag of a group below the root is 1");
                  });
    }
}

} // namespace

TreeLoader::TreeLoader(Container const& container)
    : tree_(container, "Mox Tree"), light_(container, "Light Data"),
      attributes_(container, "Attributes"), resources_(container, "Resources")
{}

std::vector<Node> TreeLoader::load()
{
    std::uint32_t const count = readNodeCount();
    std::vector<Node> nodes;
    for (std::uint32_t id = 1; id <= count; ++id) {
        nodes.push_back(
            inContext([&] { return "node " + std::to_string(id); }, [&] { return readNode(id); }));
    }
    for (KeyStream* stream : {&tree_, &light_, &attributes_, &resources_})
        stream->expectEnd();
    checkFamilies(nodes);
    checkKinds(nodes);
    return nodes;
}

std::uint32_t TreeLoader::readNodeCount()
{
    std::uint32_t const count = tree_.readCount(leastNodeSize, "node count");
    if (count == 0)
        throw FormatError(tree_.placeOf(0) + ": node count is 0");
    return count;
}

Node TreeLoader::readNode(std::uint32_t id)
{
    Node node;
    readFamily(node, id);
    readKind(node);
    readLightPosition(node);
    readContent(node);
    return node;
}

void TreeLoader::readFamily(Node& node, std::uint32_t id)
{
    std::uint64_t const start = tree_.position();
    for (std::uint32_t* field : {&node.id, &node.parent, &node.previousSibling, &node.nextSibling,
                                 &node.firstChild, &node.lastChild})
        *field = tree_.readUint32();
    if (node.id != id) {
        throw FormatError(tree_.placeOf(start) + ": id is " + std::to_string(node.id) + ", not " +
                          std::to_string(id));
    }
    if (id == 1 && node.parent != 0)
        throw FormatError("parent of the root is " + std::to_string(node.parent) + ", not 0");
    if (id > 1 && (node.parent == 0 || node.parent >= id))
        throw FormatError("parent is " + std::to_string(node.parent) + ", not an earlier node");
}

void TreeLoader::readKind(Node& node)
{
    node.name = tree_.readString();
    node.type = tree_.readString();
    node.version = tree_.readString();
    auto const kind = std::make_pair(node.type, node.version);
    if (kind == std::make_pair(std::string("Group"), std::string("0.4"))) {
        node.content = Group();
    } else if (kind == std::make_pair(std::string("Shape"), std::string("0.2"))) {
        node.content = Shape();
    } else if (kind == std::make_pair(std::string("Geometry"), std::string("0.7"))) {
        node.content = Geometry();
    } else if (!node.type.empty() || !node.version.empty()) {
        throw FormatError("type " + quoted(node.type) + " of version " + quoted(node.version) +
                          " is unknown");
    } else if (!node.name.empty()) {
        throw FormatError("a node without type has the name " + quoted(node.name));
    }
}

void TreeLoader::readLightPosition(Node& node)
{
    std::uint64_t const start = tree_.position();
    node.lightPosition = tree_.readUint64();
    if (node.lightPosition != light_.position()) {
        throw FormatError(tree_.placeOf(start) + ": light position is " +
                          std::to_string(node.lightPosition) + ", not " +
                          std::to_string(light_.position()));
    }
}

void TreeLoader::readContent(Node& node)
{
    if (node.group() != nullptr)
        node.content = readGroup();
    else if (node.shape() != nullptr)
        node.content = Shape{Material::read(resources_)};
    else if (node.geometry() != nullptr)
        node.content = readGeometry();
}

Group TreeLoader::readGroup()
{
    Group group;
    group.translation = readFloats<3>(light_);
    group.rotation = readFloats<4>(light_);
    group.scale = readFloats<3>(light_);
    group.flag = light_.readFlag();
    group.attributes = readAttributes(attributes_);
    return group;
}

Geometry TreeLoader::readGeometry()
{
    std::uint32_t const count = light_.readCount(leastVariableSize, "variable count");
    Geometry geometry;
    std::unordered_set<std::string> names;
    for (std::uint32_t i = 0; i < count; ++i) {
        inContext([&] { return "variable " + std::to_string(i); },
                  [&] {
                      geometry.variables.push_back(Variable::read(light_, attributes_));
                      std::string const& name = geometry.variables.back().name;
                      if (!names.insert(name).second)
                          throw FormatError("there is another variable " + quoted(name) +
                                            " before");
                  });
    }
    return geometry;
}

} // namespace MoxRead
