#include "integration/WritingRecord.h"

#include "container/TemporaryFile.h"
#include "moxread/Container.h"

#include <vector>

namespace Integration {

namespace {

constexpr char const* writingRecordKey = "Global Information";
constexpr std::size_t rootEntriesStart = 20;
constexpr std::size_t rootEntryCount = 20;
constexpr std::size_t indexBlockEntriesStart = 4;
constexpr std::size_t indexBlockEntryCount = 200;
constexpr std::size_t sizeOffset = 133;
constexpr std::size_t sizeLength = 4;

/// Offset of a slot's index entry: in the root index, or in the index block before its group.
std::size_t entryPosition(MoxRead::Container const& file, std::size_t slot)
{
    if (slot < rootEntryCount)
        return rootEntriesStart + slot * MoxRead::Slot::encodedSize;
    std::size_t const inGroup = (slot - rootEntryCount) % indexBlockEntryCount;
    MoxRead::Slot const& indexBlock = file.slots().at(slot - inGroup - 1);
    return indexBlock.position + indexBlockEntriesStart + inGroup * MoxRead::Slot::encodedSize;
}

} // namespace

std::string bytesWithoutWritingRecord(std::string const& path)
{
    std::string bytes = Support::ReadFile(path);
    MoxRead::Container const file(path);
    std::vector<MoxRead::Slot> const records = file.slotsOf(writingRecordKey);
    for (MoxRead::Slot const& slot : records)
        bytes.replace(entryPosition(file, slot.number) + sizeOffset, sizeLength, sizeLength, '\0');
    // From the back, so that the positions of the others still hold.
    for (auto slot = records.rbegin(); slot != records.rend(); ++slot)
        bytes.erase(slot->position, slot->size);
    return bytes;
}

} // namespace Integration
