#include "Zyl2/Mpi/LocalTree.h"

#include <algorithm>
#include <array>
#include <map>

namespace Zyl2 {
namespace Mpi {

using Mox2::ArrayView;
using Mox2::NodeType;

namespace {

std::vector<std::string> split(std::string const& path, std::string const& separators)
{
    std::vector<std::string> names;
    for (std::size_t first = 0; first <= path.size();) {
        std::size_t const end = std::min(path.find_first_of(separators, first), path.size());
        if (end != first)
            names.push_back(path.substr(first, end - first));
        first = end + 1;
    }
    return names;
}

} // namespace

LocalTree::LocalTree()
{
    model_.saveTo(std::string());
}

NodeCall LocalTree::addNode(NodeType type, std::string const& name,
                            Mox2::Attributes const& attributes)
{
    NodeCall call;
    call.type = type;
    call.name = name;
    call.id = model_.addNode(type, name, attributes);
    bool const isShape = type == NodeType::Shape;
    if (!isShape)
        call.attributes = attributes;
    if (call.id == 1) {
        note(1, isShape ? Kind::Shape : Kind::Group);
        return call;
    }
    call.parent = model_.moveToParentNode();
    if (isShape) {
        note(call.parent, Kind::Shape);
        call.parent = model_.moveToParentNode();
    }
    note(call.id, isShape ? Kind::Geometry : Kind::Group);
    model_.setCurrentNodeId(call.id);
    return call;
}

std::vector<NodeCall> LocalTree::newNodesOf(std::vector<std::string> const& paths,
                                            std::string const& separator,
                                            Mox2::Array1d<unsigned int> const& ids)
{
    std::map<unsigned int, NodeCall> added;
    std::size_t const known = kinds_.size();
    unsigned int last = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (ids[i] == 0)
            continue;
        last = ids[i];
        std::vector<std::string> const names = split(paths[i], separator);
        std::vector<unsigned int> const line = lineFromRoot(last);
        bool const endsInShape = line.size() > names.size();
        for (std::size_t depth = 0; depth < names.size(); ++depth) {
            bool const isShape = endsInShape && depth + 1 == names.size();
            // The id that a host gets for a shape is that of its geometry.
            unsigned int const id = line[isShape ? depth + 1 : depth];
            if (id <= known)
                continue;
            NodeCall& call = added[id];
            call.id = id;
            call.parent = depth == 0 ? 0 : line[depth - 1];
            call.type = isShape ? NodeType::Shape : NodeType::Group;
            call.name = names[depth];
        }
    }
    if (last != 0)
        model_.setCurrentNodeId(last);
    std::vector<NodeCall> calls;
    for (auto const& [id, call] : added) {
        if (call.type == NodeType::Shape)
            note(id - 1, Kind::Shape);
        note(id, call.type == NodeType::Shape ? Kind::Geometry : Kind::Group);
        calls.push_back(call);
    }
    return calls;
}

bool LocalTree::isGroup(unsigned int id) const
{
    return id != 0 && id <= kinds_.size() && kinds_[id - 1] == Kind::Group;
}

void LocalTree::addArray(std::string const* name, Mox2::DatasetType type, ArrayView const& values,
                         Mox2::IdsView const& components, Mox2::StepList const& steps,
                         Mox2::Attributes const& attributes)
{
    // A row stands for all of them: what is refused depends on how many columns there are.
    static std::array<float, 16> const someValues{};
    bool const fits = values.columns() <= someValues.size();
    ArrayView const row(values.data() == nullptr || !fits ? values.data() : someValues.data(),
                        ArrayView::Element::Float32, values.rows() == 0 ? 0 : 1, values.columns(),
                        0, fits ? sizeof(float) : 0);
    if (name == nullptr)
        model_.addArrayProperty(type, row, components, steps, attributes);
    else
        model_.addArrayProperty(*name, type, row, components, steps, attributes);
}

void LocalTree::note(unsigned int id, Kind kind)
{
    if (id > kinds_.size())
        kinds_.resize(id);
    kinds_[id - 1] = kind;
}

/// The root comes first, the node itself last.
std::vector<unsigned int> LocalTree::lineFromRoot(unsigned int id)
{
    std::vector<unsigned int> line = {id};
    model_.setCurrentNodeId(id);
    while (unsigned int const parent = model_.moveToParentNode())
        line.push_back(parent);
    std::reverse(line.begin(), line.end());
    return line;
}

} // namespace Mpi
} // namespace Zyl2
