#ifndef ZYL2_WVF_SLOTTABLE_H
#define ZYL2_WVF_SLOTTABLE_H

#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockTransformation.h"
#include "Zyl2/Wvf/IndexItem.h"
#include "Zyl2/Wvf/LimiterMap.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2Wvf {

/// The numbered slots of the file, each an item and a block: the pool that spare slots are taken
/// from, and the index blocks by which readers find the slots behind the first ones.
class SlotTable
{
public:
    static constexpr std::size_t RootEntryCount = 20;
    static constexpr std::size_t IndexBlockEntryCount = 200;

    /// Name of the blocks that hold index entries. Control byte and trailing blank belong to it, in
    /// memory and in the file.
    static constexpr char const* IndexBlockName = "\x0bIndex Block ";
    /// Name of the slots that nothing was put into yet; the same holds.
    static constexpr char const* SpareBlockName = "\x0b"
                                                  "Empty Block ";

    /// Whether the name's first 13 bytes are those of the reserved name.
    static bool IsAnIndexBlock(std::string const& name);
    static bool IsASpareBlock(std::string const& name);

    /// \param limiters     where the pool and the index blocks are kept, as keys of their own
    /// \param headerLength offset of the root index in the file
    SlotTable(LimiterMap& limiters, std::uint64_t headerLength);

    /// Appends a slot for `name`, whatever the pool holds.
    /// \return number of the slot
    std::size_t CreateBlock(std::string const& name);

    /// The same for a slot of the pool; nothing is left of it when memory runs out.
    std::size_t CreateSpareBlock(std::string const& name);

    /// Appends `count` spare slots; the pool then hands out the lowest slot first.
    /// \return bytes of an index table of `count` entries
    std::size_t CreateEmptyBlocks(std::size_t count);

    /// Sees to it that the pool has a slot to hand out.
    /// \throws InvalidObjectState "This point should not be reached": the pool ran dry
    void FillPool();

    /// Takes the next slot from the pool and gives it to the key.
    /// \pre the pool is filled
    /// \return number of the slot
    std::size_t TakeSpare(BlockSizeLimiter& limiter, std::string const& name);

    /// Gives the key's last slot back to the pool, which hands it out next.
    /// \pre the slot was the last that was taken
    /// \return what its block held
    Block ReturnSpare(BlockSizeLimiter& limiter);

    /// Sets the bit of `type` on the first `count` blocks of the key.
    void AddTransformation(BlockSizeLimiter& limiter, BlockTransformationType type,
                           std::size_t count);

    /// Computes where slot `slot` begins in the file: behind its predecessor.
    void UpdatePosition(std::size_t slot);

    /// Puts the entries of the slots that follow an index block's slot into `block`.
    void CopyFollowingItemsToBlock(std::size_t slot, Block& block) const;

    /// Puts the entries that stand in the file's header into `block`.
    void CopyRootItemsToBlock(Block& block) const;

    /// The block's length before it was compressed; 0 for what was saved.
    std::uint32_t GetContentLength(std::size_t slot) const;

    /// What the block adds to the logical length of its key.
    std::uint64_t GetLogicalLength(std::size_t slot) const;

    std::uint64_t GetHeaderLength() const { return headerLength_; }
    std::size_t GetSlotCount() const { return items_.size(); }
    IndexItem& GetItem(std::size_t slot) { return items_[slot]; }
    IndexItem const& GetItem(std::size_t slot) const { return items_[slot]; }
    Block& GetBlock(std::size_t slot) { return blocks_[slot]; }
    Block const& GetBlock(std::size_t slot) const { return blocks_[slot]; }

private:
    class PoolRestorer;

    void TurnLastSpareIntoIndexBlock();
    void AssignSlot(BlockSizeLimiter& limiter, std::size_t slot);
    void MarkBlocks(BlockSizeLimiter& limiter, std::size_t bit, std::size_t count);

    LimiterMap& limiters_;
    std::vector<IndexItem> items_;
    std::vector<Block> blocks_;
    std::uint8_t nextId_ = 1;
    std::uint64_t headerLength_;
    std::uint64_t rootIndexLength_ = 0;
};

} // namespace Zyl2Wvf

#endif
