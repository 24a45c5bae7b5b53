#ifndef ZYL2_MOX_NODEPAYLOAD_H
#define ZYL2_MOX_NODEPAYLOAD_H

#include "Zyl2/Mox/Node.h"
#include "Zyl2/Wvf/WvFile.h"

namespace Zyl2Mox {

/// Writes what a node holds beyond its record into the blocks of its kind. A node whose type names
/// a kind that it is not ends the process.
void SaveNodePayload(Zyl2Wvf::WvFile& file, Node const& node);

} // namespace Zyl2Mox

#endif
