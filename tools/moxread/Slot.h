#ifndef MOXREAD_SLOT_H
#define MOXREAD_SLOT_H

#include "moxread/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace MoxRead {

/// One entry of the index: a place for a block.
struct MOXREAD_EXPORT Slot
{
    static constexpr std::size_t encodedSize = 139;

    std::uint32_t number = 0;
    std::uint8_t id = 0;
    std::string name;
    std::uint64_t position = 0;
    std::uint32_t size = 0;
    std::uint8_t transformations = 0;
    std::uint8_t reserved = 0;

    /// Decodes and checks the entry whose 139 bytes stand at the given offset of the file. The
    /// position is not part of it: it follows from the sizes of the slots before.
    static Slot decode(std::uint32_t number, std::uint8_t const* bytes, std::uint64_t offset);

    /// Whether these are the bytes of a group's last entry as they are when writing the group was
    /// cut short: that entry is spare or an index block, and the rest of it is zero.
    static bool isCutShort(std::uint8_t const* bytes);

    bool isIndexBlock() const;
    bool isSpare() const;
    bool isCompressed() const;
    std::uint64_t end() const;

    /// Such as: slot 3 "Mox Tree" at byte 2800
    std::string describe() const;
};

} // namespace MoxRead

#endif
