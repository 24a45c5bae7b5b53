#ifndef ZYL2_MOX_WRITEATTRIBUTESTOWVF_H
#define ZYL2_MOX_WRITEATTRIBUTESTOWVF_H

#include "Zyl2/Util/AttributeList.h"
#include "Zyl2/Wvf/WvFile.h"

#include <string>

namespace Zyl2Util {

/// Appends an attribute list to a block.
/// \throws MiscelleneousException "Attempt to write into a frozen block"
void WriteAttributesToWvf(Zyl2Wvf::WvFile& file, std::string const& blockName,
                          AttributeList const& list);

} // namespace Zyl2Util

#endif
