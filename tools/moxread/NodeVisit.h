#ifndef MOXREAD_NODEVISIT_H
#define MOXREAD_NODEVISIT_H

#include "moxread/Export.h"
#include "moxread/Model.h"
#include "moxread/Node.h"

#include <cstddef>
#include <functional>

namespace MoxRead {

/// A node, and how far below the first one it is.
using NodeVisitor = std::function<void(Node const&, std::size_t depth)>;

/// Visits a node and all below it, parents before their children. Needs no stack, whatever the
/// depth of the tree is.
///
///     visitNodes(model, model.node(1), [](Node const& node, std::size_t) { use(node); });
MOXREAD_EXPORT void visitNodes(Model const& model, Node const& first, NodeVisitor const& visit);

} // namespace MoxRead

#endif
