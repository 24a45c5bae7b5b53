#include "moxread/NodeVisit.h"

namespace MoxRead {

namespace {

Node const* nextBelow(Model const& model, Node const& first, Node const* node, std::size_t& depth)
{
    if (node->firstChild != 0) {
        ++depth;
        return &model.node(node->firstChild);
    }
    while (node != &first && node->nextSibling == 0) {
        --depth;
        node = &model.node(node->parent);
    }
    return node == &first ? nullptr : &model.node(node->nextSibling);
}

} // namespace

void visitNodes(Model const& model, Node const& first, NodeVisitor const& visit)
{
    std::size_t depth = 0;
    for (Node const* node = &first; node != nullptr; node = nextBelow(model, first, node, depth))
        visit(*node, depth);
}

} // namespace MoxRead
