#ifndef ZYL2_WVF_INDEX_H
#define ZYL2_WVF_INDEX_H

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockSizeLimiter.h"
#include "Zyl2/Wvf/BlockTransformation.h"
#include "Zyl2/Wvf/CopyToBlock.h"
#include "Zyl2/Wvf/IndexItem.h"
#include "Zyl2/Wvf/SpareBuffers.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Zyl2Wvf {

/// Maps keys (named streams of bytes) onto numbered blocks and saves the blocks.
///
/// A key's bytes are put into its most recent block until that one is full; then the key gets a
/// new slot from the pool of spare slots. Slot order is the order of the blocks in the file. Full
/// blocks that are marked to freeze can be saved early; the rest is saved at the end.
class Index
{
public:
    static constexpr std::size_t RootEntryCount = 20;
    static constexpr std::size_t IndexBlockEntryCount = 200;

    /// A key that is looked up once, however often it is used. Belongs to the index that it was
    /// used with first.
    class Key
    {
    public:
        /// \param name has to outlive the key
        explicit Key(std::string_view name) : name_(name) {}

    private:
        friend class Index;

        std::string_view name_;
        BlockSizeLimiter* limiter_ = nullptr;
    };

    /// Name of the blocks that hold index entries. Control byte and trailing blank belong to it, in
    /// memory and in the file.
    static char const* const IndexBlockName;
    /// Name of the slots that nothing was put into yet; the same holds.
    static char const* const SpareBlockName;

    /// Whether the name's first 13 bytes are those of the reserved name.
    static bool IsAnIndexBlock(std::string const& name);
    static bool IsASpareBlock(std::string const& name);

    /// \param headerLength offset of the root index in the file
    explicit Index(std::uint64_t headerLength);

    /// Appends a slot for `name`, whatever the pool holds.
    /// \return number of the slot
    std::size_t CreateBlock(std::string const& name);

    /// Appends `count` spare slots; the pool then hands out the lowest slot first.
    /// \return bytes of an index table of `count` entries
    std::size_t CreateEmptyBlocks(std::size_t count);

    /// Assigns a slot of the pool to `name`.
    /// \return number of the slot
    /// \throws InvalidObjectState "This point should not be reached": the pool ran dry
    std::size_t AddBlock(std::string const& name);

    /// Slot that the next write for `name` goes to; a new one when there is none, or when the last
    /// one is full or frozen. The limit is checked against what is in the block already, so a
    /// write is never split and the block may end up longer than the limit.
    std::size_t GetWritingBlockIndex(std::string const& name);

    /// Appends `value` to the key's current block. `CopyToBlock.h` says which types have an
    /// encoding; types of other layers bring their own.
    /// \throws MiscelleneousException "Attempt to write into a frozen block"
    template <typename T>
    void Put(std::string const& key, T const& value)
    {
        Key found(key);
        Put(found, value);
    }

    /// The same, for callers that put many small values under one key.
    template <typename T>
    void Put(Key& key, T const& value)
    {
        std::size_t const slot = GetSlotWithRoom(key, EncodedSize(value));
        if (items_[slot].frozen)
            Zyl2::Exception::raise(
                Zyl2::Exception::MiscelleneousException("Attempt to write into a frozen block"),
                "Zyl2/Wvf/Index", __LINE__, BOOST_CURRENT_FUNCTION);
        Block& block = blocks_[slot];
        Block::PositionType const start = block.GetPosition();
        try {
            CopyToBlock(block, value);
        } catch (...) {
            // No reader can make sense of a part, so the file must not pass for whole.
            damaged_ = damaged_ || block.GetPosition() != start;
            throw;
        }
    }

    /// Appends `size` bytes to the key's current block.
    /// \throws KeyNotFound the block is frozen; not what the typed form throws, and so on purpose
    void Put(std::string const& key, void const* const& data, std::size_t size);

    /// Makes room for `size` bytes in the key's current block, which the caller has to fill before
    /// the index is used again: what is computed from a dataset needs no copy of its own.
    /// \throws KeyNotFound the block is frozen
    unsigned char* PutInPlace(std::string const& key, std::size_t size);

    /// The same for bytes that would else be put one by one: room for all of them in the block that
    /// the first would go to. Null, and nothing done, where they would be parted: there is no block
    /// yet, or it gets full on the way.
    unsigned char* PutTogether(Key& key, std::size_t size);

    /// Logical offset, in untransformed bytes over all the key's blocks, at which the next `Put`
    /// starts; 0 for an unknown key.
    std::size_t GetBlockPosition(std::string const& key);
    std::size_t GetBlockPosition(Key& key);

    /// Sets the bit of `type` on every block that the key has now; later blocks don't inherit it.
    void AddTransformation(std::string const& name, BlockTransformationType type);

    /// From now on a block of the key is compressed as soon as the key gets its next one, which
    /// takes the memory over. What waits to be saved is then a fraction of what was put.
    void CompressFullBlocks(std::string const& name);

    /// Computes where slot `slot` begins in the file: behind its predecessor.
    void UpdateBlockPositionInStream(std::size_t slot);

    /// Transforms the slot's block, unless that was done before, saves it and releases its buffer.
    /// \throws InvalidObjectState the slot is frozen: it was saved before
    /// \throws FileWriteException "Saving the buffer failed", "Unable to write to file"
    /// \throws MemoryAllocationException the block can't be compressed
    void WriteBufferToFileStream(std::size_t slot, std::FILE* stream);

    /// Saves an index block with the entries as they are now.
    /// \throws FileWriteException "Unable to write to file"
    void WriteIndexBufferToFileStream(std::size_t slot, std::FILE* stream);

    /// Saves everything that is not saved yet: blocks in slot order, root index, index blocks.
    /// \throws FileWriteException also when an earlier write failed: a file that lacks bytes is
    ///         never taken for a whole one
    /// \throws InvalidObjectState no block was ever added
    void WriteAllBuffersToFileStream(std::FILE* stream);

    /// Saves the full blocks that are marked to freeze. Does nothing without a stream.
    /// \throws NotYetImplemented an earlier block is not saved; blocks are saved in file order
    void FlushFrozen(std::FILE* stream);

    /// \throws KeyNotFound nothing was ever put under the key
    BlockSizeLimiter& GetLimiter(std::string const& key);

    std::size_t GetSlotCount() const { return items_.size(); }
    IndexItem& GetItem(std::size_t slot) { return items_[slot]; }
    Block& GetBlock(std::size_t slot) { return blocks_[slot]; }
    std::uint8_t GetNextId() const { return nextId_; }
    std::uint64_t GetHeaderLength() const { return headerLength_; }
    std::uint64_t GetRootIndexLength() const { return rootIndexLength_; }

private:
    class PoolRestorer;

    BlockSizeLimiter& GetOrAddLimiter(std::string const& name);
    BlockSizeLimiter* Find(Key& key);
    std::size_t GetWritingBlockIndex(Key& key);
    std::size_t GetSlotWithRoom(Key& key, std::uint64_t size);
    std::size_t GetUnfrozenSlotWithRoom(std::string const& key, std::uint64_t size);

    void FillPool();
    void TurnLastSpareIntoIndexBlock();
    void AssignSlot(BlockSizeLimiter& limiter, std::size_t slot);
    std::uint32_t GetContentLength(std::size_t slot) const;
    std::uint64_t GetLogicalLength(std::size_t slot) const;
    void MarkBlocks(BlockSizeLimiter& limiter, std::size_t bit);
    void FlushFrozen(BlockSizeLimiter& limiter, std::FILE* stream);
    void HandOn(BlockSizeLimiter const& limiter);
    void Compress(std::size_t slot);
    void CheckCompressed(Block const& block);
    void CheckStream(std::FILE* stream) const;
    void SaveBlock(std::size_t slot, std::FILE* stream);
    void WriteRootIndex(std::FILE* stream);
    std::size_t GetFirstUnsavedSlot();
    void CopyFollowingItemsToBlock(std::size_t slot, Block& block) const;

    std::vector<IndexItem> items_;
    std::vector<Block> blocks_;
    std::map<std::string, BlockSizeLimiter, std::less<>> limiters_;
    SpareBuffers spares_;
    std::uint8_t nextId_ = 1;
    std::uint64_t headerLength_;
    std::uint64_t rootIndexLength_ = 0;
    /// Slots before this one are frozen or index blocks.
    std::size_t firstUnsavedSlot_ = 0;
    /// A value or a block was given up half-way, or a seek failed: the file can't become whole any
    /// more.
    bool damaged_ = false;
};

} // namespace Zyl2Wvf

#endif
