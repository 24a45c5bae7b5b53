#include "moxread/Node.h"

namespace MoxRead {

Group const* Node::group() const
{
    return std::get_if<Group>(&content);
}

Shape const* Node::shape() const
{
    return std::get_if<Shape>(&content);
}

Geometry const* Node::geometry() const
{
    return std::get_if<Geometry>(&content);
}

} // namespace MoxRead
