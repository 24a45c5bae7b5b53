// Stream "Heavy Data": the values of one dataset after the other, each wholly within one block.
//
//   | content of block 1               | content of block 2     |
//   | dataset | dataset | dataset      | dataset      | dataset |
//   0         ^ a position counts the bytes of all blocks before

#include "moxread/HeavyData.h"

#include "moxread/BlockReader.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace MoxRead {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 18U;

// Reads a block to its end, and tells of the size of each piece.
void readThrough(InputFile const& file, Slot const& slot, Buffer& piece,
                 std::function<void(std::size_t)> const& tell)
{
    BlockReader reader(file, slot);
    piece.reset(pieceSize);
    while (std::size_t const count = reader.read(piece.data(), piece.size()))
        tell(count);
}

} // namespace

HeavyData::HeavyData(Container const& container)
    : container_(&container), loader_(container.file(), container.inflater())
{
    std::uint64_t start = 0;
    for (Slot const& slot : container.slotsOf("Heavy Data")) {
        std::uint64_t const length = BlockReader(container.file(), slot).length();
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
        load(*block);
        loaded_ = block;
    }
    return bytes_.data() + (position - block->start);
}

void HeavyData::load(Block const& block)
{
    if (ahead_ != nullptr && ahead_->isNext(block.slot))
        ahead_->take(bytes_);
    else
        loader_.load(block.slot, bytes_);
}

void HeavyData::expect(std::vector<std::uint64_t> const& positions)
{
    ahead_.reset();
    if (container_->threads() == 0 || positions.empty())
        return;
    std::vector<Slot> slots;
    Block const* last = loaded_;
    for (std::uint64_t const position : positions) {
        Block const* const block = find(position);
        if (block != nullptr && block != last)
            slots.push_back(block->slot);
        last = block == nullptr ? last : block;
    }
    ahead_ = std::make_unique<BlocksAhead>(
        *container_, std::move(slots),
        [](BlockLoader& loader, Slot const& slot, Buffer& content) { loader.load(slot, content); });
}

std::size_t HeavyData::blockAt(std::uint64_t position) const
{
    Block const* const block = find(position);
    return block == nullptr ? blocks_.size() : static_cast<std::size_t>(block - blocks_.data());
}

void HeavyData::check(ProgressVisitor const& tell) const
{
    ProgressVisitor const say = tell ? tell : [](std::uint64_t, std::uint64_t) {};
    if (container_->threads() == 0)
        checkHere(say);
    else
        checkInThreads(say);
}

void HeavyData::checkHere(ProgressVisitor const& tell) const
{
    Buffer piece;
    for (Block const& block : blocks_) {
        std::uint64_t done = block.start;
        readThrough(container_->file(), block.slot, piece, [&](std::size_t count) {
            done += count;
            tell(done, length());
        });
    }
}

void HeavyData::checkInThreads(ProgressVisitor const& tell) const
{
    std::vector<Slot> slots;
    for (Block const& block : blocks_)
        slots.push_back(block.slot);
    BlocksAhead ahead(*container_, std::move(slots),
                      [this](BlockLoader& /*loader*/, Slot const& slot, Buffer& piece) {
                          readThrough(container_->file(), slot, piece, [](std::size_t) {});
                      });
    Buffer piece;
    for (Block const& block : blocks_) {
        ahead.take(piece);
        tell(block.start + block.length, length());
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
