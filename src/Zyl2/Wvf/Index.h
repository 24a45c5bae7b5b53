#ifndef ZYL2_WVF_INDEX_H
#define ZYL2_WVF_INDEX_H

#include "Zyl2/Wvf/BlockKeeper.h"
#include "Zyl2/Wvf/BlockSaver.h"
#include "Zyl2/Wvf/KeyStreams.h"
#include "Zyl2/Wvf/LimiterMap.h"
#include "Zyl2/Wvf/SlotTable.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace Zyl2Wvf {

/// Maps keys (named streams of bytes) onto numbered blocks and saves the blocks.
///
/// A key's bytes are put into its most recent block until that one is full; then the key gets a
/// new slot from the pool of spare slots. Slot order is the order of the blocks in the file. Full
/// blocks that are marked to freeze can be saved early; the rest is saved at the end.
///
/// This is the door; behind it `SlotTable` keeps the slots, `KeyStreams` fills them and
/// `BlockSaver` brings them into the file.
class Index
{
public:
    static constexpr char const* IndexBlockName = SlotTable::IndexBlockName;
    static constexpr char const* SpareBlockName = SlotTable::SpareBlockName;

    using Key = KeyStreams::Key;

    /// Whether the name's first 13 bytes are those of the reserved name.
    static bool IsAnIndexBlock(std::string const& name) { return SlotTable::IsAnIndexBlock(name); }

    /// \param headerLength offset of the root index in the file
    explicit Index(std::uint64_t headerLength)
        : slots_(limiters_, headerLength), saver_(slots_, limiters_),
          streams_(slots_, limiters_, saver_)
    {}
    // The rooms know each other by their places.
    Index(Index const&) = delete;
    Index& operator=(Index const&) = delete;

    /// From now on blocks are compressed by `encoder`, and no longer by zlib.
    void SetEncoder(BlockEncoder const& encoder) { saver_.SetEncoder(encoder); }

    /// From now on blocks of new keys are full at so many bytes, whatever the environment says.
    void SetBlockSize(std::uint32_t bytes) { limiters_.SetLimit(bytes); }

    /// From now on what is put under the key by `PutInPlace` is kept by `keeper`, which has to
    /// outlive this object.
    void KeepUnsaved(std::string const& key, BlockKeeper& keeper)
    {
        limiters_.GetOrAdd(key).keeper = &keeper;
        saver_.SetKeeper(keeper);
        keeper_ = &keeper;
    }

    /// The last bytes that were put under the key are what they shall be. Nothing, unless they are
    /// kept.
    /// \param position of the first of these bytes in the key's stream
    void NoteFilled(std::string const& name, std::uint64_t position, std::size_t size)
    {
        if (keeper_ == nullptr)
            return;
        Key key(name);
        keeper_->NoteFilled(position, streams_.GetLastBytes(key, size), size);
    }

    /// From now on blocks whose stream is known are not compressed again.
    void SetKnownStreams(KnownStreams& known) { saver_.SetKnownStreams(known); }

    /// From now on full blocks are compressed by up to `count` threads, while the caller goes on.
    /// \param stream where blocks that are marked to freeze are saved when they are compressed
    void CompressInThreads(unsigned int count, std::FILE* stream)
    {
        saver_.CompressInThreads(count, stream);
    }

    /// Saves what threads have compressed, and tells what they failed at. Waits for none.
    void SaveCompressed() { saver_.SaveCompressed(); }

    /// Ends the threads. Blocks that were with them are as they were before.
    void StopThreads() noexcept { saver_.StopThreads(); }

    /// Whether this process was forked from the one that the threads compress for.
    bool IsForked() const { return saver_.IsForked(); }

    /// Seconds that the caller has waited for threads.
    double GetWaitedSeconds() const { return saver_.GetWaitedSeconds(); }

    /// Appends a slot for `name`, whatever the pool holds.
    /// \return number of the slot
    std::size_t CreateBlock(std::string const& name) { return slots_.CreateBlock(name); }

    /// Appends `count` spare slots; the pool then hands out the lowest slot first.
    /// \return bytes of an index table of `count` entries
    std::size_t CreateEmptyBlocks(std::size_t count) { return slots_.CreateEmptyBlocks(count); }

    /// Assigns a slot of the pool to `name`.
    /// \return number of the slot
    /// \throws InvalidObjectState "This point should not be reached": the pool ran dry
    std::size_t AddBlock(std::string const& name) { return streams_.AddBlock(name); }

    /// Slot that the next write for `name` goes to; a new one when there is none, or when the last
    /// one is full or frozen. The limit is checked against what is in the block already, so a
    /// write is never split and the block may end up longer than the limit.
    std::size_t GetWritingBlockIndex(std::string const& name)
    {
        Key key(name);
        return streams_.GetWritingBlock(key);
    }

    /// Appends `value` to the key's current block. `CopyToBlock.h` says which types have an
    /// encoding; types of other layers bring their own.
    /// \throws MiscelleneousException "Attempt to write into a frozen block"
    template <typename T>
    void Put(std::string const& key, T const& value)
    {
        Key found(key);
        streams_.Put(found, value);
    }

    /// The same, for callers that put many small values under one key.
    template <typename T>
    void Put(Key& key, T const& value)
    {
        streams_.Put(key, value);
    }

    /// Appends `size` bytes to the key's current block.
    /// \throws KeyNotFound the block is frozen; not what the typed form throws, and so on purpose
    void Put(std::string const& key, void const* const& data, std::size_t size);

    /// Makes room for `size` bytes in the key's current block, which the caller has to fill before
    /// the index is used again: what is computed from a dataset needs no copy of its own.
    /// \throws KeyNotFound the block is frozen
    unsigned char* PutInPlace(std::string const& key, std::size_t size)
    {
        Key found(key);
        return streams_.PutInPlace(found, size);
    }

    /// The same for bytes that may turn out to be none: where they do, the key is as it was.
    /// \param fill gets the place; \return whether the bytes shall stay, which `fill` tells
    template <typename Fill>
    bool PutIf(Key& key, std::size_t size, Fill const& fill)
    {
        std::size_t const blocks = streams_.GetBlockCount(key);
        bool const stay = fill(streams_.PutInPlace(key, size));
        if (!stay)
            streams_.TakeBack(key, size, blocks);
        return stay;
    }

    /// The same for bytes that would else be put one by one: room for all of them in the block that
    /// the first would go to. Null, and nothing done, where they would be parted: there is no block
    /// yet, or it gets full on the way.
    unsigned char* PutTogether(Key& key, std::size_t size)
    {
        return streams_.PutTogether(key, size);
    }

    /// Logical offset, in untransformed bytes over all the key's blocks, at which the next `Put`
    /// starts; 0 for an unknown key.
    std::size_t GetBlockPosition(std::string const& key)
    {
        Key found(key);
        return streams_.GetPosition(found);
    }
    std::size_t GetBlockPosition(Key& key) { return streams_.GetPosition(key); }

    /// Sets the bit of `type` on every block that the key has now; later blocks don't inherit it.
    void AddTransformation(std::string const& name, BlockTransformationType type)
    {
        streams_.AddTransformation(name, type);
    }

    /// Sets it on those that the key had when there were `count` of them.
    void AddTransformation(Key& key, BlockTransformationType type, std::size_t count)
    {
        streams_.AddTransformation(key, type, count);
    }

    /// Blocks that the key has; none for an unknown key.
    std::size_t GetBlockCount(Key& key) { return streams_.GetBlockCount(key); }

    /// From now on a block of the key is compressed as soon as the key gets its next one, which
    /// takes the memory over. What waits to be saved is then a fraction of what was put.
    void CompressFullBlocks(std::string const& name)
    {
        limiters_.GetOrAdd(name).compressesFullBlocks = true;
    }

    /// Computes where slot `slot` begins in the file: behind its predecessor.
    void UpdateBlockPositionInStream(std::size_t slot) { slots_.UpdatePosition(slot); }

    /// Transforms the slot's block, unless that was done before, saves it and releases its buffer.
    /// \throws InvalidObjectState the slot is frozen: it was saved before
    /// \throws FileWriteException "Saving the buffer failed", "Unable to write to file"
    /// \throws MemoryAllocationException the block can't be compressed
    void WriteBufferToFileStream(std::size_t slot, std::FILE* stream)
    {
        saver_.WriteBuffer(slot, stream);
    }

    /// Saves an index block with the entries as they are now.
    /// \throws FileWriteException "Unable to write to file"
    void WriteIndexBufferToFileStream(std::size_t slot, std::FILE* stream)
    {
        saver_.WriteIndexBuffer(slot, stream);
    }

    /// Saves everything that is not saved yet: blocks in slot order, root index, index blocks.
    /// \throws FileWriteException also when an earlier write failed: a file that lacks bytes is
    ///         never taken for a whole one
    /// \throws InvalidObjectState no block was ever added
    void WriteAllBuffersToFileStream(std::FILE* stream) { saver_.WriteAll(stream); }

    /// Saves the full blocks that are marked to freeze. Does nothing without a stream.
    /// \throws NotYetImplemented an earlier block is not saved; blocks are saved in file order
    void FlushFrozen(std::FILE* stream) { saver_.FlushFrozen(stream); }

    /// \throws KeyNotFound nothing was ever put under the key
    BlockSizeLimiter& GetLimiter(std::string const& key) { return limiters_.Get(key); }

    SlotTable& GetSlots() { return slots_; }

private:
    LimiterMap limiters_;
    SlotTable slots_;
    BlockSaver saver_;
    KeyStreams streams_;
    BlockKeeper* keeper_ = nullptr;
};

} // namespace Zyl2Wvf

#endif
