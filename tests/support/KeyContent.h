#ifndef TESTS_SUPPORT_KEYCONTENT_H
#define TESTS_SUPPORT_KEYCONTENT_H

#include "Zyl2/Wvf/Index.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Support {

/// Slots of the key in the order in which they were assigned; none for an unknown key.
inline std::vector<std::size_t> KeySlots(Zyl2Wvf::Index& index, std::string const& key)
{
    try {
        return index.GetLimiter(key).blocks;
    } catch (Zyl2::Exception::KeyNotFound const&) {
        return {};
    }
}

inline std::string SlotContent(Zyl2Wvf::Index& index, std::size_t slot)
{
    Zyl2Wvf::Block const& block = index.GetSlots().GetBlock(slot);
    if (block.GetLength() == 0)
        return {};
    auto const* const first = reinterpret_cast<char const*>(block.GetData());
    return {first, block.GetLength()};
}

/// What was put under the key and was not saved yet.
inline std::string KeyContent(Zyl2Wvf::Index& index, std::string const& key)
{
    std::string content;
    for (std::size_t const slot : KeySlots(index, key))
        content += SlotContent(index, slot);
    return content;
}

/// Puts the mark of a saved block on the slot that the next new key gets, so that the first write
/// of that key meets a frozen block.
inline void FreezeNextSlot(Zyl2Wvf::Index& index)
{
    index.Put<int>("Another Key", 0);
    std::vector<std::size_t> const spares = KeySlots(index, Zyl2Wvf::Index::SpareBlockName);
    index.GetSlots().GetItem(spares.back()).state = Zyl2Wvf::IndexItem::State::Frozen;
}

} // namespace Support

#endif
