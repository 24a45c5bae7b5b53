// Index entry, 139 bytes:
//
//     0    1  id: the number of the slot plus 1, modulo 256
//     1    4  width of the name field: 128
//     5  128  name, filled up with zero bytes
//   133    4  size of the block in the file
//   137    1  transformations: 1 compressed, 32 written early (frozen), or both, or 0;
//            32 in blocks of "Heavy Data" and of the index only
//   138    1  reserved: 0
//
// Names with a meaning of their own begin with a vertical tab and end with a blank:
//
//   0B "Index Block "   the block holds the entries of the next 200 slots
//   0B "Empty Block "   the slot is spare

#include "moxread/Slot.h"

#include "moxread/FormatError.h"
#include "moxread/LittleEndian.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>

namespace MoxRead {

namespace {

constexpr std::size_t nameWidthOffset = 1;
constexpr std::size_t nameOffset = 5;
constexpr std::size_t nameWidth = 128;
constexpr std::size_t sizeOffset = 133;
constexpr std::size_t transformationsOffset = 137;
constexpr std::size_t reservedOffset = 138;

constexpr std::uint8_t compressedFlag = 1;
constexpr std::uint8_t frozenFlag = 32;

char const* const indexBlockName = "\x0B"
                                   "Index Block ";
char const* const spareName = "\x0B"
                              "Empty Block ";
char const* const heavyDataName = "Heavy Data";
std::array<char const*, 7> const modelBlockNames = {
    "Mox Tree",  "Light Data",         heavyDataName, "Attributes",
    "Resources", "Global Information", "View Points"};

bool isKnown(std::string const& name)
{
    return name == indexBlockName || name == spareName ||
           std::find(modelBlockNames.begin(), modelBlockNames.end(), name) != modelBlockNames.end();
}

void checkId(Slot const& slot, std::uint64_t offset)
{
    auto const expected = static_cast<std::uint8_t>(slot.number + 1);
    if (slot.id != expected) {
        throw FormatError("id at byte " + std::to_string(offset) + " is " +
                          std::to_string(slot.id) + ", not " + std::to_string(expected));
    }
}

void checkNameWidth(std::uint32_t width, std::uint64_t offset)
{
    if (width != nameWidth) {
        throw FormatError("name field width at byte " + std::to_string(offset) + " is " +
                          std::to_string(width) + ", not 128");
    }
}

std::string decodeName(std::uint8_t const* bytes, std::uint64_t offset)
{
    std::uint8_t const* const end = bytes + nameWidth;
    std::uint8_t const* const nameEnd = std::find(bytes, end, 0);
    std::uint8_t const* const stray =
        std::find_if(nameEnd, end, [](std::uint8_t byte) { return byte != 0; });
    if (stray != end) {
        auto const strayOffset = offset + static_cast<std::uint64_t>(stray - bytes);
        throw FormatError("byte " + std::to_string(strayOffset) +
                          " of the name field is not zero although the name ended before");
    }
    return {bytes, nameEnd};
}

void checkFlags(Slot const& slot, std::uint64_t entryOffset)
{
    if ((slot.transformations & ~(compressedFlag | frozenFlag)) != 0) {
        throw FormatError("transformations at byte " +
                          std::to_string(entryOffset + transformationsOffset) + " are " +
                          std::to_string(slot.transformations) + ", not 0, 1, 32 or 33");
    }
    if (slot.reserved != 0) {
        throw FormatError("reserved byte at byte " + std::to_string(entryOffset + reservedOffset) +
                          " is " + std::to_string(slot.reserved) + ", not 0");
    }
}

void checkSpare(Slot const& slot)
{
    if (slot.size != 0)
        throw FormatError("a spare slot has size " + std::to_string(slot.size));
    if (slot.transformations != 0) {
        throw FormatError("a spare slot has transformations " +
                          std::to_string(slot.transformations));
    }
}

void checkFrozen(Slot const& slot, std::uint64_t entryOffset)
{
    bool const canBeFrozen = slot.isIndexBlock() || slot.name == heavyDataName;
    if ((slot.transformations & frozenFlag) != 0 && !canBeFrozen) {
        throw FormatError("transformations at byte " +
                          std::to_string(entryOffset + transformationsOffset) + " are " +
                          std::to_string(slot.transformations) + ", but no block of " +
                          quoted(slot.name) + " is written early");
    }
}

Slot decodeChecked(Slot slot, std::uint8_t const* bytes, std::uint64_t offset)
{
    slot.id = bytes[0];
    slot.size = decodeUint32(bytes + sizeOffset);
    slot.transformations = bytes[transformationsOffset];
    slot.reserved = bytes[reservedOffset];
    checkId(slot, offset);
    checkNameWidth(decodeUint32(bytes + nameWidthOffset), offset + nameWidthOffset);
    slot.name = decodeName(bytes + nameOffset, offset + nameOffset);
    if (!isKnown(slot.name))
        throw FormatError("unknown block name " + quoted(slot.name));
    checkFlags(slot, offset);
    if (slot.isSpare())
        checkSpare(slot);
    checkFrozen(slot, offset);
    return slot;
}

// The name field up to its last letter, the width included.
std::string encodedName(char const* name)
{
    static_assert(nameWidth == 128, "the width is 80 00 00 00");
    return std::string("\x80\0\0\0", nameOffset - nameWidthOffset) + name;
}

bool isStart(std::string const& start, std::string const& whole)
{
    return whole.compare(0, start.size(), start) == 0;
}

} // namespace

Slot Slot::decode(std::uint32_t number, std::uint8_t const* bytes, std::uint64_t offset)
{
    Slot slot;
    slot.number = number;
    return inContext([&] { return "slot " + std::to_string(number); },
                     [&] { return decodeChecked(slot, bytes, offset); });
}

bool Slot::isCutShort(std::uint8_t const* bytes)
{
    std::string written(bytes + nameWidthOffset, bytes + encodedSize);
    written.resize(written.find_last_not_of('\0') + 1);
    std::string const spare = encodedName(spareName);
    std::string const indexBlock = encodedName(indexBlockName);
    // Behind the name a spare slot has nothing but zeros, an index block has its size.
    return (isStart(written, spare) && written != spare) || isStart(written, indexBlock);
}

bool Slot::isIndexBlock() const
{
    return name == indexBlockName;
}

bool Slot::isSpare() const
{
    return name == spareName;
}

bool Slot::isCompressed() const
{
    return (transformations & compressedFlag) != 0;
}

std::uint64_t Slot::end() const
{
    return position + size;
}

std::string Slot::describe() const
{
    return "slot " + std::to_string(number) + " " + quoted(name) + " at byte " +
           std::to_string(position);
}

} // namespace MoxRead
