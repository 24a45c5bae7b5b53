#include <Zyl2/Mox2/Mesh.h>

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox2/ElementTypes.h"
#include "Zyl2/Mox2/Integers.h"
#include "Zyl2/Mox2/NodeRows.h"

#include <algorithm>
#include <limits>

namespace Zyl2 {
namespace Mox2 {

namespace {

namespace MeshSites = Exception::Sites::Mesh;
using Numbers = std::vector<unsigned int>;
using Site = decltype(MeshSites::Nodes);

constexpr std::size_t LargestCount = 2147483647;

template <typename... Parts>
[[noreturn]] void refuse(Site const& site, std::string const& mesh, Parts const&... parts)
{
    Exception::raise(site, Exception::sentence("mesh \"", mesh, "\": ", parts...));
}

/// A number and what it counts, such as "1 node" or "3 nodes".
std::string counted(std::size_t count, char const* what)
{
    return Exception::sentence(count, " ", what, count == 1 ? "" : "s");
}

void checkPointer(Site const& site, std::string const& mesh, char const* what,
                  ArrayView const& view)
{
    if (view.data() == nullptr)
        refuse(site, mesh, what, ": ", counted(view.rows(), "row"), ", but a null pointer");
}

/// Refuses an id that stands twice.
void checkUnique(Site const& site, std::string const& mesh, char const* what, Numbers ids)
{
    auto const isAscending = [&] {
        return std::adjacent_find(ids.begin(), ids.end(),
                                  [](unsigned int left, unsigned int right) {
                                      return left >= right;
                                  }) == ids.end();
    };
    if (isAscending())
        return;
    std::sort(ids.begin(), ids.end());
    auto const twice = std::adjacent_find(ids.begin(), ids.end());
    if (twice != ids.end())
        refuse(site, mesh, "two ", what, "s have the id ", *twice);
}

/// The ids of nodes or elements, as the file has them.
/// \param rows how many there have to be
Numbers idsFrom(Site const& site, std::string const& mesh, char const* what, ArrayView const& ids,
                std::size_t rows)
{
    if (ids.rows() != rows)
        refuse(site, mesh, counted(rows, what), ", but ", counted(ids.rows(), "id"));
    if (ids.columns() != 1)
        refuse(site, mesh, "ids of ", what, "s need 1 column, these have ", ids.columns());
    if (!areIntegers(ids))
        refuse(site, mesh, "ids of ", what, "s have to be integers");
    checkPointer(site, mesh, "ids", ids);
    Numbers numbers;
    numbers.reserve(rows);
    forEachInteger(ids, [&](std::size_t row, std::size_t /*column*/, auto id) {
        if (id <= 0 || static_cast<std::uint64_t>(id) > std::numeric_limits<unsigned int>::max())
            refuse(site, mesh, "the id of ", what, " ", row, " (counted from 0) is ", id,
                   ", and not between 1 and 4294967295");
        numbers.push_back(static_cast<unsigned int>(id));
    });
    checkUnique(site, mesh, what, numbers);
    return numbers;
}

/// Puts the elements of a mesh one behind the other.
class Connectivity
{
public:
    Connectivity(std::string const& mesh, NodeOrder order, NodeNumbering numbering,
                 std::size_t nodeCount, Numbers const& ids)
        : mesh_(mesh), order_(order), numbering_(numbering), nodeCount_(nodeCount),
          rows_(numbering, nodeCount, ids)
    {}

    /// \param index of the block, for what failures tell
    void append(Elements const& block, std::size_t index)
    {
        ElementDescription const& description = describe(block.type);
        checkDimension(description, index);
        check(block, description);
        std::vector<std::size_t> const places = placesIn(order_, block.type);
        if (places.empty())
            refuse(MeshSites::Elements, mesh_, nameOf(order_), " has no ", description.name);
        appendNodes(block, description, places);
        lengths.insert(lengths.end(), block.nodes.rows(),
                       static_cast<unsigned int>(description.nodes));
    }

    unsigned int dimension = 0;
    Numbers nodes;
    Numbers lengths;

private:
    void checkDimension(ElementDescription const& description, std::size_t index)
    {
        if (dimension == 0)
            dimension = description.dimension;
        else if (dimension != description.dimension)
            refuse(MeshSites::Elements, mesh_, "a shape holds elements of one dimension; it has ",
                   dimension, ", and elements ", index, ", ", description.name, ", have ",
                   description.dimension);
    }

    void check(Elements const& block, ElementDescription const& description) const
    {
        if (block.nodes.columns() != description.nodes)
            refuse(MeshSites::Elements, mesh_, description.name, " needs ",
                   counted(description.nodes, "column"), ", the nodes have ",
                   block.nodes.columns());
        if (!areIntegers(block.nodes))
            refuse(MeshSites::Elements, mesh_, "the nodes of elements have to be integers");
        if (block.nodes.rows() > LargestCount / description.nodes ||
            nodes.size() > LargestCount - block.nodes.rows() * description.nodes)
            refuse(MeshSites::Elements, mesh_, "the nodes of all elements are more than ",
                   LargestCount);
        if (block.nodes.rows() != 0)
            checkPointer(MeshSites::Elements, mesh_, description.name, block.nodes);
    }

    void appendNodes(Elements const& block, ElementDescription const& description,
                     std::vector<std::size_t> const& places)
    {
        // Where each of the host's nodes of an element goes.
        std::vector<std::size_t> targets(places.size());
        for (std::size_t i = 0; i < places.size(); ++i)
            targets[places[i]] = i;
        std::size_t const first = nodes.size();
        nodes.resize(first + block.nodes.rows() * description.nodes);
        forEachInteger(block.nodes, [&](std::size_t row, std::size_t column, auto number) {
            unsigned int const node = rows_(number);
            if (node == NodeRows::None)
                refuse(MeshSites::Elements, mesh_, "element ", row, " of ", description.name,
                       ", node ", column, " (both counted from 0) is ", number, ", ",
                       whatThereIs());
            nodes[first + row * description.nodes + targets[column]] = node;
        });
    }

    std::string whatThereIs() const
    {
        switch (numbering_) {
        case NodeNumbering::Ids:
            return Exception::sentence("which is no node's id");
        case NodeNumbering::FromOne:
            return Exception::sentence("and there are ", counted(nodeCount_, "node"),
                                       ", numbered from 1");
        case NodeNumbering::FromZero:
            break;
        }
        return Exception::sentence("and there are ", counted(nodeCount_, "node"),
                                   ", numbered from 0");
    }

    std::string const& mesh_;
    NodeOrder order_;
    NodeNumbering numbering_;
    std::size_t nodeCount_;
    NodeRows rows_;
};

DatasetType typeOf(DatasetType ofLines, unsigned int dimension)
{
    return static_cast<DatasetType>(static_cast<unsigned int>(ofLines) + dimension - 1);
}

/// All blocks with ids, or none.
Numbers elementIdsFrom(std::string const& mesh, std::vector<Elements> const& elements)
{
    Numbers ids;
    std::size_t withIds = 0;
    std::size_t withElements = 0;
    for (Elements const& block : elements) {
        withElements += block.nodes.rows() != 0 ? 1 : 0;
        if (block.ids.rows() == 0)
            continue;
        ++withIds;
        Numbers const more =
            idsFrom(MeshSites::Elements, mesh, "element", block.ids, block.nodes.rows());
        ids.insert(ids.end(), more.begin(), more.end());
    }
    if (withIds != 0 && withIds != withElements)
        refuse(MeshSites::Elements, mesh, "some elements have ids and some have none");
    checkUnique(MeshSites::Elements, mesh, "element", ids);
    return ids;
}

} // namespace

unsigned int addGroup(Model& model, unsigned int parent, std::string const& name,
                      Attributes const& attributes)
{
    model.setCurrentNodeId(parent);
    unsigned int const id = model.addNode(NodeType::Group, name, attributes);
    model.setCurrentNodeId(parent);
    return id;
}

unsigned int addShape(Model& model, unsigned int parent, std::string const& name)
{
    model.setCurrentNodeId(parent);
    unsigned int const id = model.addNode(NodeType::Shape, name);
    model.setCurrentNodeId(parent);
    return id;
}

Mesh::Mesh(Model& model, unsigned int parent, std::string const& name, NodeOrder order,
           NodeNumbering numbering)
    : model_(&model), name_(name), order_(order), numbering_(numbering),
      id_(addShape(model, parent, name))
{}

void Mesh::setNodes(ArrayView const& coordinates, ArrayView const& ids)
{
    if (nodes_ != 0)
        refuse(MeshSites::Nodes, name_, "the nodes are set already");
    if (coordinates.rows() == 0)
        refuse(MeshSites::Nodes, name_, "there are no nodes");
    if (coordinates.columns() != 3)
        refuse(MeshSites::Nodes, name_, "coordinates need 3 columns, these have ",
               coordinates.columns());
    if (areIntegers(coordinates))
        refuse(MeshSites::Nodes, name_, "coordinates have to be floats or doubles, not integers");
    if (coordinates.rows() > LargestCount)
        refuse(MeshSites::Nodes, name_, "there are more than ", LargestCount, " nodes");
    if (ids.rows() == 0 && numbering_ == NodeNumbering::Ids)
        refuse(MeshSites::Nodes, name_, "elements name nodes by ids, but the nodes have none");
    Numbers numbers;
    if (ids.rows() != 0)
        numbers = idsFrom(MeshSites::Nodes, name_, "node", ids, coordinates.rows());
    model_->addArrayProperty(DatasetType::Coordinates, coordinates, id_, Step());
    if (!numbers.empty())
        model_->addArrayProperty(DatasetType::NodeIds, numbers, id_, Step());
    nodes_ = coordinates.rows();
    if (numbering_ == NodeNumbering::Ids)
        ids_ = std::move(numbers);
}

void Mesh::setElements(std::vector<Elements> const& elements)
{
    if (nodes_ == 0)
        refuse(MeshSites::Elements, name_, "elements need nodes: call setNodes first");
    if (elements_ != 0)
        refuse(MeshSites::Elements, name_,
               "the elements are set already; elements of all types go into one call");
    if (nameOf(order_) == nullptr)
        refuse(MeshSites::Elements, name_, static_cast<unsigned int>(order_),
               " is no order of nodes");
    Connectivity connectivity(name_, order_, numbering_, nodes_, ids_);
    for (std::size_t i = 0; i < elements.size(); ++i)
        connectivity.append(elements[i], i);
    if (connectivity.lengths.empty())
        refuse(MeshSites::Elements, name_, "there are no elements");
    Numbers const ids = elementIdsFrom(name_, elements);
    unsigned int const dimension = connectivity.dimension;
    model_->addArrayProperty(typeOf(DatasetType::Connectivity1, dimension), connectivity.nodes, id_,
                             Step());
    model_->addArrayProperty(typeOf(DatasetType::Polylength1, dimension), connectivity.lengths, id_,
                             Step());
    if (!ids.empty())
        model_->addArrayProperty(DatasetType::ElementIds, ids, id_, Step());
    elements_ = connectivity.lengths.size();
    // Ids of nodes are needed only to find the rows that elements name.
    Numbers().swap(ids_);
}

void Mesh::addNodeResult(std::string const& name, ArrayView const& values, Step const& step,
                         Attributes const& attributes)
{
    if (nodes_ == 0)
        refuse(MeshSites::Result, name_, "the result \"", name,
               "\" needs nodes: call setNodes first");
    if (values.rows() != nodes_)
        refuse(MeshSites::Result, name_, "the result \"", name, "\" has ",
               counted(values.rows(), "row"), ", the mesh ", counted(nodes_, "node"));
    bool const rotates = name == "Displacement";
    addResult(name,
              {DatasetType::NodeScalar, DatasetType::NodeVector,
               rotates ? DatasetType::NodeVector6 : DatasetType::NodeTensor},
              values, step, attributes);
}

void Mesh::addElementResult(std::string const& name, ArrayView const& values, Step const& step,
                            Attributes const& attributes)
{
    if (elements_ == 0)
        refuse(MeshSites::Result, name_, "the result \"", name,
               "\" needs elements: call setElements first");
    if (values.rows() != elements_)
        refuse(MeshSites::Result, name_, "the result \"", name, "\" has ",
               counted(values.rows(), "row"), ", the mesh ", counted(elements_, "element"));
    addResult(name,
              {DatasetType::ElementScalar, DatasetType::ElementVector, DatasetType::ElementTensor},
              values, step, attributes);
}

void Mesh::addResult(std::string const& name, TypesByColumns const& types, ArrayView const& values,
                     Step const& step, Attributes const& attributes)
{
    auto const typeFrom = [&] {
        switch (values.columns()) {
        case 1:
            return types.one;
        case 3:
            return types.three;
        case 6:
            return types.six;
        default:
            refuse(MeshSites::Result, name_, "a result has 1, 3 or 6 columns, \"", name, "\" has ",
                   values.columns());
        }
    };
    DatasetType const type = typeFrom();
    if (name.empty())
        refuse(MeshSites::Result, name_, "a result needs a name");
    model_->addArrayProperty(name, type, values, id_, step, attributes);
}

} // namespace Mox2
} // namespace Zyl2
