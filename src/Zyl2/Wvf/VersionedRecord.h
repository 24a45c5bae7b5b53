#ifndef ZYL2_WVF_VERSIONEDRECORD_H
#define ZYL2_WVF_VERSIONEDRECORD_H

#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/CopyToBlock.h"

#include <cstdint>
#include <string>

// A versioned record:
//
//     +----------------+-----------------+------------------------------+
//     | record size, 4 | version, string | fields of that version       |
//     +----------------+-----------------+------------------------------+
//
// The record size counts itself. It is known last, so 0 is written first and patched.

namespace Zyl2Wvf {

/// Appends `object` as a versioned record. Its type offers, found by its namespace,
/// `std::string RecordVersion(T const&)` and `void CopyFieldsToBlock(Block&, T const&)`.
/// \throws OutOfBounds "Invalid block position": the size can't be patched
template <typename T>
void CopyToBlock_Versioned(Block& block, T const& object)
{
    Block::PositionType const begin = block.GetPosition();
    CopyToBlock(block, std::uint32_t(0));
    CopyToBlock(block, RecordVersion(object));
    CopyFieldsToBlock(block, object);
    Block::PositionType const end = block.GetPosition();
    block.SetPosition(begin);
    CopyToBlock(block, std::uint32_t(end - begin));
    block.SetPosition(end);
}

} // namespace Zyl2Wvf

#endif
