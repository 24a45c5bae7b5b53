#ifndef TESTS_SUPPORT_WRITINGRECORD_H
#define TESTS_SUPPORT_WRITINGRECORD_H

#include "container/TemporaryFile.h"
#include "moxread/Container.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Support {

/// Where the file tells the size of a slot's block: in the root index, or in the index block
/// before the slot.
inline std::size_t placeOfSize(MoxRead::Container const& container, std::uint32_t slot)
{
    constexpr std::size_t rootStart = 20;
    constexpr std::uint32_t rootEntries = 20;
    constexpr std::uint32_t groupEntries = 200;
    constexpr std::size_t entryLength = 139;
    constexpr std::size_t sizeOffset = 133;
    constexpr std::size_t countLength = 4;
    if (slot < rootEntries)
        return rootStart + slot * entryLength + sizeOffset;
    std::uint32_t const inGroup = (slot - rootEntries) % groupEntries;
    MoxRead::Slot const& indexBlock = container.slots()[slot - inGroup - 1];
    return indexBlock.position + countLength + inGroup * entryLength + sizeOffset;
}

/// A model file's bytes without the writing record's blocks and with their sizes blanked: what is
/// left depends on nothing but the calls.
inline std::string withoutWritingRecord(std::string const& path)
{
    std::string bytes = ReadFile(path);
    MoxRead::Container const container(path);
    std::vector<MoxRead::Slot> const slots = container.slotsOf("Global Information");
    for (MoxRead::Slot const& slot : slots)
        bytes.replace(placeOfSize(container, slot.number), sizeof slot.size, sizeof slot.size, ' ');
    // The last one first, so that the others stay where they are.
    std::for_each(slots.rbegin(), slots.rend(),
                  [&bytes](MoxRead::Slot const& slot) { bytes.erase(slot.position, slot.size); });
    return bytes;
}

} // namespace Support

#endif
