#include "Zyl2/Mpi/SharedTree.h"

#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/PropertyMap.h"
#include "Zyl2/Mpi/Failure.h"
#include "Zyl2/Mpi/RankAttributes.h"

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <type_traits>

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;

using Mox2::Attributes;
using Mox2::NodeProperties;
using Mox2::NodeType;

namespace {

/// Bytes that are the same for the same value, and for no other.
template <typename VariantT>
std::string bytesOf(VariantT const& variant)
{
    std::string bytes(1, static_cast<char>(variant.which()));
    boost::apply_visitor(
        [&](auto const& value) {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_arithmetic_v<Value>)
                bytes.append(reinterpret_cast<char const*>(&value), sizeof value);
            else if constexpr (std::is_same_v<Value, std::string>)
                bytes += value;
            else if constexpr (std::is_same_v<Value, std::vector<int>> ||
                               std::is_same_v<Value, std::vector<float>>)
                bytes.append(reinterpret_cast<char const*>(value.data()),
                             value.size() * sizeof value[0]);
        },
        variant);
    return bytes;
}

std::string subjectOf(std::string const& attribute)
{
    return "attribute \"" + attribute + "\"";
}

std::string subjectOf(Mox2::PropertyType type)
{
    return "property " + std::to_string(static_cast<unsigned int>(type));
}

/// Sets what a call says over what calls before it said.
void merge(NodeDataCall& into, NodeDataCall const& call)
{
    Mox2::AttributeMap attributes = into.attributes.map();
    for (auto const& [name, value] : call.attributes.map())
        attributes[name] = value;
    into.attributes = Attributes(attributes);
    for (auto const& [type, value] : call.properties.map())
        boost::apply_visitor(
            [&, property = type](auto const& one) { into.properties.set(property, one); }, value);
}

} // namespace

void SharedTree::beginRank(int rank)
{
    rank_ = rank;
}

void SharedTree::add(NodeCall const& call)
{
    unsigned int id = 0;
    if (call.parent == 0)
        id = addRoot(call);
    else if (call.type == NodeType::Shape)
        id = addShape(call, idOf(call.parent));
    else
        id = addGroup(call, idOf(call.parent));
    setId(call.id, id);
}

unsigned int SharedTree::addRoot(NodeCall const& call)
{
    if (!hasRoot_) {
        model_.addNode(call.type, call.name, call.attributes);
        hasRoot_ = true;
        root_ = call;
        rootsRank_ = rank_;
        shared_[1] = call.name;
    } else if (root_.type != call.type || root_.name != call.name) {
        raiseWith(Sites::OtherRoot, "the root of rank " + std::to_string(rank_) + " is \"" +
                                        call.name + "\", that of rank " +
                                        std::to_string(rootsRank_) + " \"" + root_.name +
                                        "\", or of another type");
    }
    stateAttributes(1, call, rootsRank_ == rank_);
    return 1;
}

unsigned int SharedTree::addGroup(NodeCall const& call, unsigned int parent)
{
    GroupName const name(parent, call.name);
    std::size_t const number = nodes_[rank_].groups[name]++;
    std::vector<unsigned int>& alike = groups_[name];
    bool const isNew = number == alike.size();
    if (isNew) {
        model_.setCurrentNodeId(parent);
        alike.push_back(model_.addNode(call.type, call.name, call.attributes));
        shared_[alike.back()] = call.name;
    }
    stateAttributes(alike[number], call, isNew);
    return alike[number];
}

unsigned int SharedTree::addShape(NodeCall const& call, unsigned int parent)
{
    model_.setCurrentNodeId(parent);
    unsigned int const id = model_.addNode(call.type, call.name);
    setId(call.id - 1, id - 1);
    return id;
}

/// A group that is found again has to be as it was added.
void SharedTree::stateAttributes(unsigned int id, NodeCall const& call, bool isNew)
{
    Mox2::AttributeMap attributes;
    for (auto const& [name, value] : call.attributes.map()) {
        bool const isSaidFirst = isNews(id, subjectOf(name), bytesOf(value), true);
        if (isSaidFirst && !isNew)
            attributes[name] = value;
    }
    if (attributes.empty())
        return;
    model_.setNodeData(id, NodeProperties(), Attributes(attributes));
}

void SharedTree::add(NodeDataCall const& call)
{
    unsigned int const id = idOf(call.id);
    if (shared_.count(id) == 0)
        model_.setNodeData(id, call.properties, call.attributes);
    else
        merge(pending_[id], call);
}

void SharedTree::endRank()
{
    std::map<unsigned int, NodeDataCall> const pending = std::move(pending_);
    pending_.clear();
    for (auto const& [id, call] : pending) {
        for (auto const& [name, value] : call.attributes.map())
            isNews(id, subjectOf(name), bytesOf(value), false);
        for (auto const& [type, value] : call.properties.map())
            isNews(id, subjectOf(type), bytesOf(value), false);
        model_.setNodeData(id, call.properties, call.attributes);
    }
}

/// Keeps in mind what a rank says of a shared node.
/// \param isAskedAlways whether it has to agree with what was said before the last collective call
/// \return whether it was not said before
bool SharedTree::isNews(unsigned int id, std::string const& what, std::string const& value,
                        bool isAskedAlways)
{
    auto const [place, isNew] = statements_.try_emplace({id, what});
    Statement& known = place->second;
    bool const mustAgree =
        !isNew && known.rank != rank_ && (isAskedAlways || known.round == round_);
    if (mustAgree && known.value != value)
        refuse(id, what, known.rank);
    bool const isSaid = !isNew && known.value == value;
    if (isNew || !isSaid)
        known.rank = rank_;
    known.round = round_;
    known.value = value;
    return !isSaid;
}

void SharedTree::refuse(unsigned int id, std::string const& what, int other) const
{
    raiseWith(Sites::RanksDiffer, "the " + what + " of \"" + shared_.at(id) +
                                      "\" is not the same on ranks " + std::to_string(other) +
                                      " and " + std::to_string(rank_));
}

void SharedTree::add(ArrayCall const& call, Mox2::ArrayView const& values)
{
    std::vector<unsigned int> const ids = idsOf(call);
    if (call.hasName)
        model_.addArrayProperty(call.name, call.type, values, ids, call.steps, withRank(call));
    else
        model_.addArrayProperty(call.type, values, ids, call.steps, withRank(call));
}

void SharedTree::add(ArrayCall const& call, Mox2::ArrayPieces& values)
{
    std::vector<unsigned int> const ids = idsOf(call);
    if (call.hasName)
        model_.addArrayPieces(call.name, call.type, values, ids, call.steps, withRank(call));
    else
        model_.addArrayPieces(call.type, values, ids, call.steps, withRank(call));
}

Attributes SharedTree::withRank(ArrayCall const& call) const
{
    Attributes attributes = call.attributes;
    attributes.set(RankAttributes::Rank, rank_);
    attributes.set(RankAttributes::Ranks, ranks_);
    return attributes;
}

std::vector<unsigned int> SharedTree::idsOf(ArrayCall const& call) const
{
    std::vector<unsigned int> ids;
    ids.reserve(call.ids.size());
    for (std::uint32_t const id : call.ids)
        ids.push_back(idOf(id));
    return ids;
}

unsigned int SharedTree::idOf(std::uint32_t local) const
{
    return nodes_.at(rank_).ids.at(local - 1);
}

void SharedTree::setId(std::uint32_t local, unsigned int id)
{
    std::vector<unsigned int>& ids = nodes_[rank_].ids;
    if (ids.size() < local)
        ids.resize(local);
    ids[local - 1] = id;
}

} // namespace Mpi
} // namespace Zyl2
