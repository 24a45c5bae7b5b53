#ifndef ZYL2_MOX2_EXTRACTOR_NODEID_H
#define ZYL2_MOX2_EXTRACTOR_NODEID_H

#include "Zyl2/Base/Extractor.h"
#include "Zyl2/Mox2/Database.h"

#include <string>

namespace Zyl2 {
namespace Mox2 {
namespace Extractor {

/// Finds a node by its path.
class NodeId : public Base::Extractor<Database, unsigned int>
{
public:
    NodeId(std::string const& path, std::string const& separator);

    /// \return the node's id; 0 for an empty path and when there is none
    /// \throws InvalidObjectState "Not initialized"
    /// \throws std::out_of_range the path names the root only
    unsigned int extractFrom(Database const& database) override;

private:
    std::string path_;
    std::string separator_;
};

} // namespace Extractor
} // namespace Mox2
} // namespace Zyl2

#endif
