#include "Zyl2/Mox2/Modifier/CurrentNodeId.h"

#include "Zyl2/Exception/Raise.h"

namespace Zyl2 {
namespace Mox2 {
namespace Modifier {

CurrentNodeId::CurrentNodeId(unsigned int id) : id_(id) {}

void CurrentNodeId::update(Database& database)
{
    database.assertNotEmpty();
    Zyl2Mox::Tree& tree = *database.tree;
    if (id_ == 0 || id_ > tree.GetNodeCount())
        Exception::raise(Exception::Sites::CurrentNodeId::NoSuchNode,
                         Exception::sentence("no node has the id ", id_, "; the last one is ",
                                             tree.GetNodeCount()));
    tree.SetCurrentId(id_);
}

} // namespace Modifier
} // namespace Mox2
} // namespace Zyl2
