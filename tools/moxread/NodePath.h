#ifndef MOXREAD_NODEPATH_H
#define MOXREAD_NODEPATH_H

#include "moxread/Export.h"
#include "moxread/Model.h"
#include "moxread/Node.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace MoxRead {

/// Says in one line why a path leads to no node, or to several.
class MOXREAD_EXPORT PathError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// How people name a node of a model: the names from the root down, joined by "/", or "#" and the
/// node's id. A "/" or "\" inside a name, and a "#" at the beginning of a root's name, is preceded
/// by "\".
///
///     MoxRead::Model model("beam.mox");
///     MoxRead::Node const& node = MoxRead::NodePath("Beam/Steel").find(model);
class MOXREAD_EXPORT NodePath
{
public:
    /// Raises PathError when the text is no path: "#" without a number, or a "\" at the end.
    explicit NodePath(std::string const& text);

    /// All nodes that the path leads to, in the order of their ids.
    std::vector<Node const*> findAll(Model const& model) const;

    /// The only node that the path leads to. Raises PathError when there is none or another one.
    Node const& find(Model const& model) const;

    /// The geometry that carries the datasets of the node that the path leads to: the node itself,
    /// or for a shape its child. Raises PathError, also for nodes that carry none.
    Node const& findGeometry(Model const& model) const;

    /// The path of a node, as the constructor takes it.
    static std::string of(Model const& model, Node const& node);

private:
    std::vector<Node const*> findByNames(Model const& model) const;

    std::string text_;
    /// 0 unless the path is an id.
    std::uint64_t id_ = 0;
    std::vector<std::string> names_;
};

/// The node that people name when they speak of a geometry's datasets: its shape.
MOXREAD_EXPORT Node const& ownerOf(Model const& model, Node const& geometry);

/// The geometry that carries the datasets of a node: the node itself, or for a shape its child.
/// Null for other nodes.
MOXREAD_EXPORT Node const* geometryOf(Model const& model, Node const& node);

} // namespace MoxRead

#endif
