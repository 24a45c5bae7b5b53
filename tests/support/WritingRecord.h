#ifndef TESTS_SUPPORT_WRITINGRECORD_H
#define TESTS_SUPPORT_WRITINGRECORD_H

#include "container/TemporaryFile.h"
#include "moxread/Container.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
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

/// Content of a slot's block.
inline std::string inflated(std::string const& file, MoxRead::Slot const& slot)
{
    constexpr std::size_t lengthSize = 4;
    std::string const block = file.substr(slot.position, slot.size);
    if (!slot.isCompressed() || block.size() < lengthSize)
        return block;
    std::uint32_t length = 0;
    std::memcpy(&length, block.data(), lengthSize);
    std::string content(std::size_t(length) + 1, ' ');
    uLongf written = content.size();
    if (uncompress(reinterpret_cast<Bytef*>(&content[0]), &written,
                   reinterpret_cast<Bytef const*>(block.data() + lengthSize),
                   block.size() - lengthSize) != Z_OK)
        return "no zlib stream";
    return content.substr(0, written);
}

/// All slots but the writing record's and those of the index, with what their blocks inflate to.
inline std::string inflatedWithoutWritingRecord(std::string const& path)
{
    std::string const file = ReadFile(path);
    MoxRead::Container const container(path);
    std::string result;
    for (MoxRead::Slot const& slot : container.slots())
        if (slot.name != "Global Information" && !slot.isIndexBlock())
            result += std::to_string(slot.number) + slot.name + inflated(file, slot) + '\n';
    return result;
}

/// Whether MOXWRITER_ENCODER chooses ISA-L, which does not always express a block in the same way.
inline bool isIsalChosen()
{
    char const* const name = std::getenv("MOXWRITER_ENCODER");
    return name != nullptr && std::string(name) == "isal";
}

/// A model file's bytes without the writing record's blocks and with their sizes blanked: what is
/// left depends on nothing but the calls. Where blocks may be expressed in several ways, what they
/// inflate to.
inline std::string withoutWritingRecord(std::string const& path)
{
    if (isIsalChosen())
        return inflatedWithoutWritingRecord(path);
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
