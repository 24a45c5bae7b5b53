#include "moxread/Node.h"

namespace MoxRead {

const Group* Node::group() const
{
    return std::get_if<Group>(&content);
}

const Shape* Node::shape() const
{
    return std::get_if<Shape>(&content);
}

const Geometry* Node::geometry() const
{
    return std::get_if<Geometry>(&content);
}

} // namespace MoxRead
