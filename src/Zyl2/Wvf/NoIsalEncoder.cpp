// Takes the place of IsalEncoder.cpp where ISA-L was not found.

#include "Zyl2/Wvf/BlockEncoder.h"

namespace Zyl2Wvf {

BlockEncoder const* IsalEncoder() noexcept
{
    return nullptr;
}

} // namespace Zyl2Wvf
