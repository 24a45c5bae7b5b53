// Stream "Heavy Data": the values of one dataset after the other, each wholly within one block.
//
//   | content of block 1               | content of block 2     |
//   | dataset | dataset | dataset      | dataset      | dataset |
//   0         ^ a position counts the bytes of all blocks before

#include "moxread/HeavyData.h"

#include "moxread/BlockReader.h"

#include <algorithm>
#include <iterator>

namespace MoxRead {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 18U;

} // namespace

HeavyData::HeavyData(Container const& container) : file_(&container.file())
{
    std::uint64_t start = 0;
    for (Slot const& slot : container.slotsOf("Heavy Data")) {
        std::uint64_t const length = BlockReader(*file_, slot).length();
        blocks_.push_back({slot, start, length});
        start += length;
    }
}

std::uint64_t HeavyData::length() const
{
    return blocks_.empty() ? 0 : blocks_.back().start + blocks_.back().length;
}

bool HeavyData::contains(std::uint64_t position, std::uint64_t count) const
{
    if (count == 0)
        return position <= length();
    Block const* const block = find(position);
    return block != nullptr && count <= block->start + block->length - position;
}

std::uint8_t const* HeavyData::bytesAt(std::uint64_t position)
{
    Block const* const block = find(position);
    if (block == nullptr)
        return nullptr;
    if (block != loaded_) {
        loaded_ = nullptr;
        std::vector<std::uint8_t>().swap(bytes_);
        bytes_ = BlockReader(*file_, block->slot).readAll();
        loaded_ = block;
    }
    return bytes_.data() + (position - block->start);
}

std::size_t HeavyData::blockAt(std::uint64_t position) const
{
    Block const* const block = find(position);
    return block == nullptr ? blocks_.size() : static_cast<std::size_t>(block - blocks_.data());
}

void HeavyData::check(ProgressVisitor const& tell) const
{
    std::vector<std::uint8_t> piece(pieceSize);
    for (Block const& block : blocks_) {
        BlockReader reader(*file_, block.slot);
        std::uint64_t done = block.start;
        while (std::size_t const count = reader.read(piece.data(), piece.size())) {
            done += count;
            if (tell)
                tell(done, length());
        }
    }
}

HeavyData::Block const* HeavyData::find(std::uint64_t position) const
{
    if (position >= length())
        return nullptr;
    // The last of the blocks that start at or before the position: empty blocks share their start
    // with the one that follows.
    auto const after = std::upper_bound(
        blocks_.begin(), blocks_.end(), position,
        [](std::uint64_t value, Block const& block) { return value < block.start; });
    return &*std::prev(after);
}

} // namespace MoxRead
