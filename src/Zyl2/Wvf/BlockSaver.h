#ifndef ZYL2_WVF_BLOCKSAVER_H
#define ZYL2_WVF_BLOCKSAVER_H

#include "Zyl2/Wvf/BlockEncoder.h"
#include "Zyl2/Wvf/LimiterMap.h"
#include "Zyl2/Wvf/SlotTable.h"
#include "Zyl2/Wvf/SpareBuffers.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace Zyl2Wvf {

class BlockKeeper;
class CompressionThreads;
class KnownStreams;

/// Brings blocks into the file: compresses them, computes their places, writes them, and finishes
/// the file with the tables that list them. What fails, and what is logged, bears the names of
/// `Index`, which hosts know it by.
class BlockSaver
{
public:
    BlockSaver(SlotTable& slots, LimiterMap& limiters);
    BlockSaver(BlockSaver const&) = delete;
    BlockSaver& operator=(BlockSaver const&) = delete;
    /// Ends its threads.
    ~BlockSaver();

    /// From now on blocks are compressed by `encoder`, and no longer by zlib.
    void SetEncoder(BlockEncoder const& encoder) { encoder_ = &encoder; }

    /// From now on blocks whose stream is known are not compressed again.
    /// \param known has to outlive this object
    void SetKnownStreams(KnownStreams& known) { known_ = &known; }

    /// From now on `keeper` is told when a block is saved.
    /// \param keeper has to outlive this object
    void SetKeeper(BlockKeeper& keeper) { keeper_ = &keeper; }

    /// From now on full blocks are compressed by up to `count` threads, while the caller goes on.
    /// At most `count` + 2 blocks of a key that is saved early and `count` + 1 of its streams are
    /// in memory then: a caller that is faster than the threads waits for them. \param count  at
    /// least 1 \param stream where blocks that are marked to freeze are saved when they are
    /// compressed
    void CompressInThreads(unsigned int count, std::FILE* stream);

    /// Saves blocks that threads have compressed, as far as they are to be saved early and all
    /// before them are saved; waits for none. Without threads it does nothing. \throws what a
    /// thread failed at, in the way of `WriteBuffer`
    void SaveCompressed();

    /// Ends the threads. Blocks that were with them are as they were before.
    void StopThreads() noexcept;

    /// Whether this process was forked from the one that started the threads, or keeps blocks. It
    /// has none, and nothing may be written here: the file belongs to the other one.
    bool IsForked() const;

    /// Seconds that the caller has waited for threads.
    double GetWaitedSeconds() const;

    /// Transforms the slot's block, unless that was done before, saves it and releases its buffer.
    /// \throws InvalidObjectState the slot is frozen: it was saved before
    /// \throws FileWriteException "Saving the buffer failed", "Unable to write to file"
    /// \throws MemoryAllocationException the block can't be compressed
    void WriteBuffer(std::size_t slot, std::FILE* stream);

    /// Saves an index block with the entries as they are now.
    /// \throws FileWriteException "Unable to write to file"
    void WriteIndexBuffer(std::size_t slot, std::FILE* stream);

    /// Saves everything that is not saved yet: blocks in slot order, root index, index blocks.
    /// \throws FileWriteException also when an earlier write failed: a file that lacks bytes is
    ///         never taken for a whole one
    /// \throws InvalidObjectState no block was ever added
    void WriteAll(std::FILE* stream);

    /// Saves the full blocks that are marked to freeze, but for those that threads have not
    /// finished. Does nothing without a stream. \throws NotYetImplemented an earlier block is not
    /// saved; blocks are saved in file order
    void FlushFrozen(std::FILE* stream);

    /// For a key that got a block after a full one, and so is likely to fill another one:
    /// compresses the full block, if the key wants that, and gives the new one what memory there
    /// is.
    /// \throws MemoryAllocationException the block can't be compressed
    void HandOn(BlockSizeLimiter const& limiter);

    /// Keeps the memory of a block that is not needed for blocks that follow.
    void Keep(Block block) noexcept { spares_.LeaveContent(block.Release()); }

    /// A value was given up half-way: the file can't become whole any more.
    void MarkDamaged() { damaged_ = true; }

private:
    void FlushFrozen(BlockSizeLimiter& limiter, std::FILE* stream);
    void Compress(std::size_t slot);
    bool AdoptKnownStream(std::size_t slot);
    void TellKeeper(std::size_t slot, std::uint32_t contentLength, std::FILE* stream);
    void MarkCompressed(std::size_t slot);
    bool CompressElsewhere(std::size_t slot);
    void CompressAhead(std::size_t& slot);
    std::size_t TakeBack();
    void SaveOldest();
    void SaveEarly(std::size_t slot, std::FILE* stream);
    void FlushForForks(std::FILE* stream);
    bool IsToBeSavedEarly(std::size_t slot);
    void CheckProcess();
    void CheckCompressed(bool isCompressed);
    void CheckStream(std::FILE* stream) const;
    void SaveBlock(std::size_t slot, std::FILE* stream);
    void WriteRootIndex(std::FILE* stream);
    std::size_t GetFirstUnsavedSlot();

    SlotTable& slots_;
    LimiterMap& limiters_;
    BlockEncoder const* encoder_ = &ZlibEncoder;
    KnownStreams* known_ = nullptr;
    BlockKeeper* keeper_ = nullptr;
    SpareBuffers spares_;
    std::unique_ptr<CompressionThreads> threads_;
    /// Where blocks that threads have compressed are saved; null without threads.
    std::FILE* earlyStream_ = nullptr;
    double waitedSeconds_ = 0;
    /// Slots before this one are frozen or index blocks.
    std::size_t firstUnsavedSlot_ = 0;
    /// A value or a block was given up half-way, or a seek failed.
    bool damaged_ = false;
    /// Bytes that were written before the next block was looked for did not reach the file.
    bool flushFailed_ = false;
};

} // namespace Zyl2Wvf

#endif
