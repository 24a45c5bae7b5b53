#include "moxread/PartitionTree.h"

#include "moxread/FormatError.h"
#include "moxread/Text.h"

#include <limits>
#include <utility>

namespace MoxRead {

namespace {

bool isNumber(Attributes const& attributes, char const* name, std::uint32_t& number)
{
    auto const found = attributes.find(name);
    if (found == attributes.end() || !std::holds_alternative<std::uint32_t>(found->second))
        return false;
    number = std::get<std::uint32_t>(found->second);
    return true;
}

void requireOwn(PartitionIndex const& index, PartitionFile const& file, Variable const& variable)
{
    std::uint32_t number = 0;
    if (isNumber(variable.attributes, "Ranks", number) && number != index.ranks())
        throw FormatError("it is of another run, of " + std::to_string(number) + " ranks, not of " +
                          std::to_string(index.ranks()));
    if (isNumber(variable.attributes, "Rank", number) && !file.isOf(number))
        throw FormatError("it is of another run: it has values of rank " + std::to_string(number) +
                          ", not only of " + file.rankText());
}

} // namespace

void requireOwn(PartitionIndex const& index, PartitionFile const& file,
                std::vector<Node> const& nodes)
{
    for (Node const& node : nodes) {
        if (node.geometry() == nullptr)
            continue;
        for (Variable const& variable : node.geometry()->variables)
            requireOwn(index, file, variable);
    }
}

void PartitionTree::add(PartitionFile const& file, std::vector<Node> nodes,
                        std::uint64_t heavyStart)
{
    // Ranks that added nothing have a root without content.
    if (nodes.size() == 1 && nodes[0].type.empty()) {
        remarks_.push_back(quoted(file.name) + " of " + file.rankText() + " holds nothing");
        if (!nodes_.empty())
            return;
    }
    requireOwn(index_, file, nodes);
    std::vector<std::uint32_t> ids(nodes.size() + 1);
    std::map<GroupName, std::size_t> seen;
    for (Node const& node : nodes)
        ids[node.id] = idFor(node, ids[node.parent], seen);
    for (Node& node : nodes) {
        std::uint32_t const id = ids[node.id];
        if (id <= nodes_.size()) {
            merge(nodes_[id - 1], node, file);
            continue;
        }
        node.parent = ids[node.parent];
        node.id = id;
        if (auto* const geometry = std::get_if<Geometry>(&node.content)) {
            for (Variable& variable : geometry->variables) {
                variable.link.nodeId = variable.linked ? ids[variable.link.nodeId] : 0;
                variable.dataPosition += variable.linked ? 0 : heavyStart;
            }
        }
        nodes_.push_back(std::move(node));
    }
}

/// A node's id in the whole tree. New ones are added in ascending order.
std::uint32_t PartitionTree::idFor(Node const& node, std::uint32_t parent,
                                   std::map<GroupName, std::size_t>& seen)
{
    if (node.id == 1 && !nodes_.empty())
        return 1;
    if (lastId_ >= std::numeric_limits<std::uint32_t>::max())
        throw FormatError("the files have more nodes than a model can count");
    auto const next = static_cast<std::uint32_t>(lastId_ + 1);
    if (node.group() == nullptr) {
        lastId_ = next;
        return next;
    }
    GroupName const name(parent, node.name);
    std::size_t const number = seen[name]++;
    std::vector<std::uint32_t>& alike = groups_[name];
    if (number == alike.size()) {
        alike.push_back(next);
        lastId_ = next;
    }
    return alike[number];
}

void PartitionTree::merge(Node& known, Node const& other, PartitionFile const& file)
{
    if (known.type.empty()) {
        // Until now no file has said what the root is.
        known.name = other.name;
        known.type = other.type;
        known.version = other.version;
        known.content = other.content;
        return;
    }
    if (known.id == 1 && (known.name != other.name || known.type != other.type))
        throw FormatError("it is of another model: its root is " + MoxRead::quoted(other.name) +
                          ", not " + MoxRead::quoted(known.name));
    auto* const group = std::get_if<Group>(&known.content);
    if (group == nullptr)
        return;
    Group const& said = *other.group();
    if (group->translation != said.translation || group->rotation != said.rotation ||
        group->scale != said.scale)
        remarks_.push_back(MoxRead::quoted(file.name) + " has another transform of the group " +
                           MoxRead::quoted(known.name) + ": that of an earlier file is taken");
    for (auto const& [name, value] : said.attributes)
        if (group->attributes.emplace(name, value).first->second != value)
            remarks_.push_back(MoxRead::quoted(file.name) + " has another value of the attribute " +
                               MoxRead::quoted(name) + " of the group " +
                               MoxRead::quoted(known.name) + ": that of an earlier file is taken");
}

std::vector<Node> PartitionTree::takeNodes()
{
    std::vector<std::uint32_t> lastChild(nodes_.size() + 1);
    for (Node& node : nodes_) {
        node.previousSibling = lastChild[node.parent];
        node.nextSibling = node.firstChild = node.lastChild = 0;
        lastChild[node.parent] = node.id;
        if (node.parent == 0)
            continue;
        Node& parent = nodes_[node.parent - 1];
        if (node.previousSibling == 0)
            parent.firstChild = node.id;
        else
            nodes_[node.previousSibling - 1].nextSibling = node.id;
        parent.lastChild = node.id;
    }
    return std::move(nodes_);
}

} // namespace MoxRead
