#include "ModelJoin.h"

#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace Mox::Join {

using MoxRead::Node;
using MoxRead::quoted;
using Zyl2::Mox2::NodeProperties;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::PropertyType;

namespace {

/// The material of a shape that was given none.
MoxRead::Material usualMaterial()
{
    MoxRead::Material material;
    material.diffuse = {0.8F, 0.8F, 0.8F, 1};
    material.specular = {0, 0, 0, 1};
    material.emissive = {0, 0, 0, 1};
    for (std::size_t i = 0; i < material.ambient.size(); ++i)
        material.ambient[i] = 0.2F * material.diffuse[i];
    material.shininess = 0.2F;
    return material;
}

template <typename Values>
std::vector<float> vectorOf(Values const& values, std::size_t count)
{
    return std::vector<float>(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count));
}

Zyl2::Mox2::Attributes attributesOf(MoxRead::Group const& group)
{
    Zyl2::Mox2::Attributes result;
    for (auto const& [name, value] : group.attributes)
        std::visit([&, &key = name](auto const& one) { result.set(key, one); }, value);
    return result;
}

/// The rank that a piece is of; those that don't say come last.
std::uint32_t rankOf(Node const& geometry)
{
    MoxRead::Attributes const& attributes = geometry.geometry()->variables.front().attributes;
    auto const found = attributes.find("Rank");
    auto const* const rank =
        found == attributes.end() ? nullptr : std::get_if<std::uint32_t>(&found->second);
    return rank == nullptr ? std::numeric_limits<std::uint32_t>::max() : *rank;
}

bool areAlike(MoxRead::Material const& one, MoxRead::Material const& other)
{
    auto const parts = [](MoxRead::Material const& material) {
        return std::tie(material.diffuse, material.specular, material.emissive, material.ambient,
                        material.transparency, material.shininess);
    };
    return parts(one) == parts(other);
}

} // namespace

ModelJoin::ModelJoin(MoxRead::Model& from, Zyl2::Mox2::Model& to, Options const& options,
                     std::function<void(std::size_t, std::size_t)> tell)
    : from_(from), to_(to), options_(options), tell_(std::move(tell)),
      all_(static_cast<std::size_t>(
          std::count_if(from.nodes().begin(), from.nodes().end(),
                        [](Node const& node) { return node.geometry() != nullptr; })))
{}

void ModelJoin::run()
{
    Node const& root = from_.node(1);
    if (root.shape() != nullptr) {
        to_.addNode(NodeType::Shape, root.name);
        setMaterial(root, 1);
    } else if (root.group() != nullptr) {
        addGroup(root, 0);
    }
    addChildren();
}

/// Groups may be nested as deeply as there are nodes: deeper than calls can be.
void ModelJoin::addChildren()
{
    std::vector<Level> levels;
    levels.push_back(levelOf(1, 1));
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            levels.pop_back();
            continue;
        }
        Node const& node = *level.children[level.next++];
        if (node.shape() != nullptr)
            addShape(level.pieces.at(node.name), level.to);
        else
            levels.push_back(levelOf(node.id, addGroup(node, level.to)));
    }
}

/// Shapes of a name stand where the first of them does.
ModelJoin::Level ModelJoin::levelOf(std::uint32_t parent, unsigned int to) const
{
    Level level;
    level.to = to;
    for (std::uint32_t id = from_.node(parent).firstChild; id != 0;
         id = from_.node(id).nextSibling) {
        Node const& node = from_.node(id);
        if (node.group() != nullptr || (node.shape() != nullptr && level.pieces[node.name].empty()))
            level.children.push_back(&node);
        if (node.shape() != nullptr)
            level.pieces[node.name].push_back(&node);
        else if (node.group() == nullptr && node.geometry() == nullptr)
            options_.warn(quoted(MoxRead::NodePath::of(from_, node)) +
                          " is neither a group nor a shape, and is left out");
    }
    return level;
}

unsigned int ModelJoin::addGroup(Node const& node, unsigned int parent)
{
    MoxRead::Group const& group = *node.group();
    if (parent != 0)
        to_.setCurrentNodeId(parent);
    NodeType const type = parent != 0  ? NodeType::Group
                          : group.flag ? NodeType::FlaggedRootGroup
                                       : NodeType::RootGroup;
    unsigned int const id = to_.addNode(type, node.name, attributesOf(group));
    NodeProperties properties;
    properties.set(PropertyType::Translation, vectorOf(group.translation, 3));
    properties.set(PropertyType::Rotation, vectorOf(group.rotation, 4));
    properties.set(PropertyType::Scale, vectorOf(group.scale, 3));
    to_.setNodeData(id, properties);
    return id;
}

void ModelJoin::addShape(std::vector<Node const*> const& pieces, unsigned int parent)
{
    std::vector<Node const*> geometries;
    for (Node const* const piece : pieces) {
        Node const* const geometry = MoxRead::geometryOf(from_, *piece);
        if (geometry != nullptr && !geometry->geometry()->variables.empty())
            geometries.push_back(geometry);
    }
    std::stable_sort(geometries.begin(), geometries.end(), [](Node const* left, Node const* right) {
        return rankOf(*left) < rankOf(*right);
    });
    bool const isColouredAlike = std::all_of(pieces.begin(), pieces.end(), [&](Node const* piece) {
        return areAlike(piece->shape()->material, pieces.front()->shape()->material);
    });
    if (!isColouredAlike)
        options_.warn(quoted(MoxRead::NodePath::of(from_, *pieces.front())) +
                      " has other materials in other files: that of the first is taken");
    std::size_t const done = done_ + pieces.size();
    if (geometries.empty()) {
        addShapeNode(*pieces.front(), parent);
    } else if (JoinedShape joined(from_, geometries, options_); joined.canBeJoined()) {
        joined.write(to_, addShapeNode(*pieces.front(), parent));
    } else {
        options_.warn(quoted(MoxRead::NodePath::of(from_, *pieces.front())) +
                      " stays in pieces: not all of its nodes have ids, or not all of its elements "
                      "tell how many nodes they have");
        for (Node const* const geometry : geometries)
            JoinedShape(from_, {geometry}, options_)
                .write(to_, addShapeNode(MoxRead::ownerOf(from_, *geometry), parent));
    }
    done_ = done;
    tell_(done_, all_);
    // Nodes that a host has added below a piece are not joined.
    for (Node const* const piece : pieces)
        if (Node const* const geometry = MoxRead::geometryOf(from_, *piece))
            if (geometry->firstChild != 0)
                options_.warn(quoted(MoxRead::NodePath::of(from_, *piece)) +
                              " has nodes below it, which are left out");
}

unsigned int ModelJoin::addShapeNode(Node const& node, unsigned int parent)
{
    to_.setCurrentNodeId(parent);
    unsigned int const id = to_.addNode(NodeType::Shape, node.name);
    setMaterial(node, id);
    ++shapes_;
    return id;
}

/// Sets only what differs from the usual material, as a colour that is set loses its fourth value.
void ModelJoin::setMaterial(Node const& node, unsigned int id)
{
    static MoxRead::Material const usual = usualMaterial();
    MoxRead::Material const& own = node.shape()->material;
    constexpr std::size_t channels = 3;
    NodeProperties properties;
    auto const setColor = [&](PropertyType type, MoxRead::Color const& color,
                              MoxRead::Color const& other) {
        if (color != other)
            properties.set(type, vectorOf(color, channels));
    };
    setColor(PropertyType::DiffuseColor, own.diffuse, usual.diffuse);
    setColor(PropertyType::SpecularColor, own.specular, usual.specular);
    setColor(PropertyType::EmissiveColor, own.emissive, usual.emissive);
    setColor(PropertyType::AmbientColor, own.ambient, usual.ambient);
    if (own.transparency != usual.transparency)
        properties.set(PropertyType::Transparency, own.transparency);
    if (own.shininess != usual.shininess)
        properties.set(PropertyType::Shininess, own.shininess);
    to_.setNodeData(id, properties);
}

} // namespace Mox::Join
