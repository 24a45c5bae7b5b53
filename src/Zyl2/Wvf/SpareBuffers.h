#ifndef ZYL2_WVF_SPAREBUFFERS_H
#define ZYL2_WVF_SPAREBUFFERS_H

#include "Zyl2/Util/Buffer.h"

namespace Zyl2Wvf {

/// What compressed and saved blocks leave to those that follow: a long run of blocks then takes its
/// memory from the system once. The first touch of a page may cost as much as compressing it.
struct SpareBuffers
{
    /// Large enough for the content of a full block, or empty.
    Zyl2Util::Buffer content;
    /// For what compression makes of a block.
    Zyl2Util::Buffer stream;
};

} // namespace Zyl2Wvf

#endif
