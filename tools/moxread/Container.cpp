// File:
//
//      0     8  signature: 89 57 56 46 0D 0A 1A 0A
//      8     4  version: "1.3" 00
//     12     4  length of the root index: 2784
//     16     4  number of entries in the root index: 20
//     20  2780  20 index entries of 139 bytes (drawn in Slot.cpp): slots 0 to 19
//   2800   ...  the blocks of slots 0, 1, 2, ... back to back, up to the file's last byte
//
// Index block, 27804 bytes, never compressed, in the last slot of a group of 20 or 200 slots:
//
//      0     4  number of entries: 200
//      4 27800  200 index entries: the slots after those known so far

#include "moxread/Container.h"

#include "moxread/BlockReader.h"
#include "moxread/FormatError.h"
#include "moxread/LittleEndian.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace MoxRead {

namespace {

constexpr std::array<std::uint8_t, 8> signature = {0x89, 0x57, 0x56, 0x46, 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::array<std::uint8_t, 4> fileVersion = {0x31, 0x2E, 0x33, 0x00};
constexpr std::uint64_t versionOffset = 8;
constexpr std::uint64_t rootLengthOffset = 12;
constexpr std::uint64_t rootCountOffset = 16;
constexpr std::uint64_t rootEntriesOffset = 20;
constexpr std::uint32_t rootLength = 2784;
constexpr std::uint32_t rootCount = 20;
constexpr std::uint64_t firstBlockOffset = 2800;
constexpr std::uint32_t indexBlockCount = 200;
constexpr std::uint32_t indexBlockSize = 27804;
constexpr std::uint8_t indexBlockTransformations = 32;

std::uint32_t readUint32(InputFile const& file, std::uint64_t offset)
{
    std::array<std::uint8_t, 4> bytes = {};
    file.read(offset, bytes.data(), bytes.size());
    return decodeUint32(bytes.data());
}

void requireEqual(std::uint32_t value, std::uint32_t expected, std::string const& what)
{
    if (value != expected) {
        throw FormatError(what + " is " + std::to_string(value) + ", not " +
                          std::to_string(expected));
    }
}

void checkIndexBlock(Slot const& slot)
{
    if (slot.transformations != indexBlockTransformations) {
        throw FormatError("index block has transformations " +
                          std::to_string(slot.transformations) + ", not 32");
    }
    requireEqual(slot.size, indexBlockSize, "size of the index block");
}

} // namespace

Container::Container(std::string const& path, ReadOptions const& options)
    : inflater_(wholeInflaterOf(options.inflater)), threads_(options.threads), file_(path)
{
    readHeader();
    readRootIndex();
    readIndexChain();
    checkEnd();
}

InputFile const& Container::file() const noexcept
{
    return file_;
}

WholeInflater Container::inflater() const noexcept
{
    return inflater_;
}

unsigned int Container::threads() const noexcept
{
    return threads_;
}

std::vector<Slot> const& Container::slots() const noexcept
{
    return slots_;
}

std::vector<Slot> Container::slotsOf(std::string const& key) const
{
    std::vector<Slot> result;
    std::copy_if(slots_.begin(), slots_.end(), std::back_inserter(result),
                 [&](Slot const& slot) { return slot.name == key; });
    return result;
}

std::size_t Container::blockCount() const
{
    return static_cast<std::size_t>(std::count_if(
        slots_.begin(), slots_.end(), [](Slot const& slot) { return !slot.isSpare(); }));
}

std::vector<std::uint8_t> Container::streamBytes(std::string const& key) const
{
    std::vector<std::uint8_t> result;
    for (Slot const& slot : slotsOf(key)) {
        std::vector<std::uint8_t> const block = BlockReader(file_, slot).readAll();
        result.insert(result.end(), block.begin(), block.end());
    }
    return result;
}

void Container::readHeader() const
{
    std::array<std::uint8_t, signature.size()> bytes = {};
    std::size_t const count = std::min<std::size_t>(file_.size(), bytes.size());
    file_.read(0, bytes.data(), count);
    if (!std::equal(bytes.begin(), bytes.begin() + count, signature.begin()))
        throw FormatError("not a mox file: it does not begin with the signature");
    if (file_.size() < rootLengthOffset) {
        throw FormatError::incomplete("the file ends at byte " + std::to_string(file_.size()) +
                                      ", within the header");
    }
    std::array<std::uint8_t, fileVersion.size()> found = {};
    file_.read(versionOffset, found.data(), found.size());
    if (found != fileVersion) {
        throw FormatError("version at byte 8 is " +
                          quoted(std::string(found.begin(), found.end())) +
                          R"(, not "1.3" and a zero byte)");
    }
}

void Container::readRootIndex()
{
    if (file_.size() < firstBlockOffset) {
        throw FormatError::incomplete("the file ends at byte " + std::to_string(file_.size()) +
                                      ", within the root index");
    }
    std::uint32_t const length = readUint32(file_, rootLengthOffset);
    std::uint32_t const count = readUint32(file_, rootCountOffset);
    if (length == 0 && count == 0)
        throw FormatError::incomplete("the root index at byte 12 was never written");
    requireEqual(length, rootLength, "root index length at byte 12");
    requireEqual(count, rootCount, "root index entry count at byte 16");
    addGroup("the root index at byte 12", rootEntriesOffset, rootCount);
}

void Container::readIndexChain()
{
    while (slots_.back().isIndexBlock()) {
        std::uint64_t const position = slots_.back().position;
        std::string const place = slots_.back().describe();
        std::uint32_t const count = readUint32(file_, position);
        if (count == 0)
            throw FormatError::incomplete(place + " was never written");
        requireEqual(count, indexBlockCount, place + ": entry count");
        addGroup(place, position + sizeof indexBlockCount, indexBlockCount);
    }
}

void Container::addGroup(std::string const& place, std::uint64_t offset, std::uint32_t count)
{
    std::vector<std::uint8_t> bytes(count * Slot::encodedSize);
    file_.read(offset, bytes.data(), bytes.size());
    if (Slot::isCutShort(bytes.data() + (count - 1) * Slot::encodedSize))
        throw FormatError::incomplete(place + " was written in part only");
    for (std::uint32_t i = 0; i < count; ++i) {
        std::size_t const entry = i * Slot::encodedSize;
        auto const number = static_cast<std::uint32_t>(slots_.size());
        addSlot(Slot::decode(number, bytes.data() + entry, offset + entry));
        if (i + 1 < count && slots_.back().isIndexBlock()) {
            throw FormatError(slots_.back().describe() +
                              ": an index block is not the last slot of its group");
        }
    }
    checkGroupEnd(slots_.back());
}

void Container::addSlot(Slot slot)
{
    slot.position = slots_.empty() ? firstBlockOffset : slots_.back().end();
    if (!slot.isSpare() && !slots_.empty() && slots_.back().isSpare())
        throw FormatError(slot.describe() + ": a block follows a spare slot");
    if (slot.isIndexBlock())
        inContext([&] { return slot.describe(); }, [&] { checkIndexBlock(slot); });
    if (slot.end() > file_.size()) {
        throw FormatError::incomplete(slot.describe() + " ends at byte " +
                                      std::to_string(slot.end()) + ", the file at byte " +
                                      std::to_string(file_.size()));
    }
    slots_.push_back(std::move(slot));
}

void Container::checkGroupEnd(Slot const& last) const
{
    if (!last.isIndexBlock() && !last.isSpare()) {
        throw FormatError(last.describe() +
                          ": the last slot of a group is neither spare nor an index block");
    }
}

void Container::checkEnd() const
{
    std::uint64_t const end = slots_.back().end();
    if (end == file_.size())
        return;
    std::string const what = std::to_string(file_.size() - end) +
                             " bytes follow the last block, from byte " + std::to_string(end);
    // The last blocks are missing from an index block that a writer did not come to write again.
    if (slots_.size() > rootCount)
        throw FormatError::incomplete(what);
    throw FormatError(what);
}

} // namespace MoxRead
