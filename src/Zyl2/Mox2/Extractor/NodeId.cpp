#include "Zyl2/Mox2/Extractor/NodeId.h"

namespace Zyl2 {
namespace Mox2 {
namespace Extractor {

NodeId::NodeId(std::string const& path, std::string const& separator)
    : path_(path), separator_(separator)
{}

unsigned int NodeId::extractFrom(Database const& database)
{
    database.assertNotEmpty();
    return path_.empty() ? 0 : database.tree->getNodeId(path_, separator_);
}

} // namespace Extractor
} // namespace Mox2
} // namespace Zyl2
