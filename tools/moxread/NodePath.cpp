// Path:
//
//   Beam/Steel       root "Beam", its child "Steel"
//   Beam/a\/b\\c     root "Beam", its child "a/b\c"
//   #2               the node with the id 2
//   \#2              root "#2"

#include "moxread/NodePath.h"

#include "moxread/Text.h"

#include <algorithm>
#include <charconv>

namespace MoxRead {

namespace {

constexpr char separator = '/';
constexpr char escape = '\\';
constexpr char idMark = '#';
constexpr std::size_t greatestListedCount = 20;

std::uint64_t parseId(std::string const& text)
{
    std::uint64_t id = 0;
    char const* const end = text.data() + text.size();
    auto const result = std::from_chars(text.data() + 1, end, id);
    if (result.ec != std::errc() || result.ptr != end)
        throw PathError(quoted(text) + " is no path: behind \"#\" there has to be a node's id");
    return id;
}

std::vector<std::string> split(std::string const& text)
{
    std::vector<std::string> names(1);
    for (auto it = text.begin(); it != text.end(); ++it) {
        if (*it == separator) {
            names.emplace_back();
            continue;
        }
        if (*it == escape && ++it == text.end())
            throw PathError(quoted(text) + R"( is no path: nothing follows the last "\")");
        names.back() += *it;
    }
    return names;
}

std::string escaped(std::string const& name)
{
    std::string result;
    for (char const character : name) {
        if (character == separator || character == escape)
            result += escape;
        result += character;
    }
    return result;
}

std::string listOf(std::vector<Node const*> const& nodes)
{
    std::string list;
    std::size_t const listed = std::min(nodes.size(), greatestListedCount);
    for (std::size_t i = 0; i < listed; ++i)
        list += (i == 0 ? "#" : ", #") + std::to_string(nodes[i]->id);
    if (nodes.size() > listed)
        list += " and " + std::to_string(nodes.size() - listed) + " more";
    return list;
}

} // namespace

NodePath::NodePath(std::string const& text) : text_(text)
{
    if (!text.empty() && text.front() == idMark)
        id_ = parseId(text);
    else
        names_ = split(text);
}

std::vector<Node const*> NodePath::findAll(Model const& model) const
{
    if (!names_.empty())
        return findByNames(model);
    if (id_ == 0 || id_ > model.nodes().size())
        return {};
    return {&model.node(static_cast<std::uint32_t>(id_))};
}

std::vector<Node const*> NodePath::findByNames(Model const& model) const
{
    std::vector<Node const*> found;
    if (model.node(1).name == names_.front())
        found.push_back(&model.node(1));
    for (auto name = names_.begin() + 1; name != names_.end(); ++name) {
        std::vector<Node const*> next;
        for (Node const* parent : found)
            for (std::uint32_t id = parent->firstChild; id != 0; id = model.node(id).nextSibling)
                if (model.node(id).name == *name)
                    next.push_back(&model.node(id));
        found.swap(next);
    }
    std::sort(found.begin(), found.end(),
              [](Node const* left, Node const* right) { return left->id < right->id; });
    return found;
}

Node const& NodePath::find(Model const& model) const
{
    std::vector<Node const*> const found = findAll(model);
    if (found.empty())
        throw PathError("no node has the path " + quoted(text_));
    if (found.size() > 1)
        throw PathError("several nodes have the path " + quoted(text_) + ": " + listOf(found));
    return *found.front();
}

Node const& NodePath::findGeometry(Model const& model) const
{
    Node const* const geometry = geometryOf(model, find(model));
    if (geometry == nullptr)
        throw PathError("the node at " + quoted(text_) + " is no shape and carries no datasets");
    return *geometry;
}

std::string NodePath::of(Model const& model, Node const& node)
{
    std::vector<Node const*> line = {&node};
    while (line.back()->parent != 0)
        line.push_back(&model.node(line.back()->parent));
    std::string path;
    for (auto it = line.rbegin(); it != line.rend(); ++it)
        path += (it == line.rbegin() ? "" : std::string(1, separator)) + escaped((*it)->name);
    return path.empty() || path.front() != idMark ? path : escape + path;
}

Node const& ownerOf(Model const& model, Node const& geometry)
{
    return geometry.parent == 0 ? geometry : model.node(geometry.parent);
}

Node const* geometryOf(Model const& model, Node const& node)
{
    if (node.geometry() != nullptr)
        return &node;
    if (node.shape() == nullptr || node.firstChild == 0)
        return nullptr;
    Node const& child = model.node(node.firstChild);
    return child.geometry() == nullptr ? nullptr : &child;
}

} // namespace MoxRead
