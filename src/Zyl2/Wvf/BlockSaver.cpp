#include "Zyl2/Wvf/BlockSaver.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Wvf/BlockKeeper.h"
#include "Zyl2/Wvf/BlockZlibCompressor.h"
#include "Zyl2/Wvf/CompressionThreads.h"
#include "Zyl2/Wvf/KnownStreams.h"

#include <optional>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace IndexSites = Zyl2::Exception::Sites::Index;
using State = IndexItem::State;
using Zyl2::Exception::raise;

constexpr int SavingLevel = 6;

/// To give a shorter block to a thread costs more than it saves, when nothing else waits for it.
constexpr std::uint32_t WorthAThread = 16384;

/// Contract: the functions that receivers of log records know these statements by.
namespace LogFunctions {
constexpr char const* WriteBuffer =
    "void Zyl2Wvf::Index::WriteBufferToFileStream(std::size_t, FILE*)";
constexpr char const* WriteIndexBuffer =
    "void Zyl2Wvf::Index::WriteIndexBufferToFileStream(std::size_t, FILE*)";
constexpr char const* WriteAll = "void Zyl2Wvf::Index::WriteAllBuffersToFileStream(FILE*)";
constexpr char const* FlushFrozen = "void Zyl2Wvf::Index::FlushFrozen(FILE*)";
} // namespace LogFunctions

template <typename... Pieces>
void Log(char const* function, unsigned long line, Pieces const&... pieces)
{
    Zyl2::Log::write(IndexSites::Source, function, line, pieces...);
}

/// Content that a keeper holds does not go with the block's buffer.
class KeptContent
{
public:
    explicit KeptContent(Block const& block)
        : data_(block.GetBuffer().IsBorrowed() ? block.GetBuffer().GetData() : nullptr),
          capacity_(block.GetCapacity()), length_(block.GetLength())
    {}

    /// \return whether there is some
    bool Restore(Block& block) const
    {
        if (data_ == nullptr)
            return false;
        block.Adopt(Zyl2Util::Buffer::Borrow(data_, capacity_), length_);
        return true;
    }

private:
    unsigned char* data_;
    std::size_t capacity_;
    std::uint32_t length_;
};

} // namespace

BlockSaver::BlockSaver(SlotTable& slots, LimiterMap& limiters) : slots_(slots), limiters_(limiters)
{}

BlockSaver::~BlockSaver()
{
    StopThreads();
}

void BlockSaver::WriteBuffer(std::size_t slot, std::FILE* stream)
{
    Log(LogFunctions::WriteBuffer, __LINE__, "Writing buffer ", slot, " to stream.");
    IndexItem& item = slots_.GetItem(slot);
    Block& block = slots_.GetBlock(slot);
    if (item.IsFrozen())
        raise(IndexSites::SavedBefore);
    std::uint32_t const length = slots_.GetContentLength(slot);
    if (length != 0)
        Log(LogFunctions::WriteBuffer, __LINE__, "Buffer length: ", length);
    bool const compressed = Has(item.transformations, BlockTransformationType::Compress);
    if (compressed)
        Compress(slot);

    // From here on the block counts as saved: what was transformed can't be saved a second time.
    try {
        if (compressed)
            Log(LogFunctions::WriteBuffer, __LINE__,
                "Buffer length after transformations: ", block.GetLength());
        item.size = block.GetLength();
        slots_.UpdatePosition(slot);
        if (Has(item.transformations, BlockTransformationType::Freeze))
            item.Freeze(length);
        else
            item.state = State::Open;
        SaveBlock(slot, stream);
        TellKeeper(slot, length, stream);
    } catch (...) {
        if (!item.IsFrozen())
            item.state = State::Open;
        block.Reset();
        damaged_ = true;
        throw;
    }
    Zyl2Util::Buffer saved = block.Release();
    if (compressed)
        spares_.stream.Leave(std::move(saved));
    Log(LogFunctions::WriteBuffer, __LINE__, "Buffer ", slot, " written to stream.");
}

void BlockSaver::HandOn(BlockSizeLimiter const& limiter)
{
    std::size_t const full = limiter.blocks[limiter.blocks.size() - 2];
    if (limiter.compressesFullBlocks && !slots_.GetItem(full).IsFrozen()) {
        if (!CompressElsewhere(full)) {
            Compress(full);
            slots_.GetBlock(full).ReleaseUnused();
        }
    }
    Zyl2Util::Buffer spare = spares_.content.Take();
    if (spare.GetSize() != 0)
        slots_.GetBlock(limiter.blocks.back()).Adopt(std::move(spare), 0);
}

/// Does nothing to a block that is compressed already; waits for one that a thread has.
void BlockSaver::Compress(std::size_t slot)
{
    IndexItem& item = slots_.GetItem(slot);
    while (item.state == State::BeingCompressed)
        TakeBack();
    if (item.state == State::Compressed)
        return;
    Block& block = slots_.GetBlock(slot);
    std::uint32_t const length = block.GetLength();
    if (!AdoptKnownStream(slot)) {
        KeptContent const kept(block);
        BlockZlibCompressor compress(SavingLevel, *encoder_, spares_);
        compress(block);
        if (block.GetLength() == 0 && kept.Restore(block))
            raise(IndexSites::NotCompressed);
        CheckCompressed(block.GetLength() != 0);
    }
    item.Compress(length);
    MarkCompressed(slot);
}

/// \return whether the slot's block is compressed by that
bool BlockSaver::AdoptKnownStream(std::size_t slot)
{
    if (known_ == nullptr)
        return false;
    Block& block = slots_.GetBlock(slot);
    std::uint32_t const length = block.GetLength();
    Zyl2Util::Buffer stream = BlockZlibCompressor::BufferFor(length, &spares_);
    std::size_t const written = known_->Copy(slot, length, stream);
    if (written == 0) {
        spares_.stream.Leave(std::move(stream));
        return false;
    }
    spares_.LeaveContent(block.Release());
    block.Adopt(std::move(stream), static_cast<std::uint32_t>(written));
    return true;
}

void BlockSaver::TellKeeper(std::size_t slot, std::uint32_t contentLength, std::FILE* stream)
{
    if (keeper_ == nullptr)
        return;
    IndexItem const& item = slots_.GetItem(slot);
    keeper_->NoteSaved(slot, item.position, item.size, contentLength, stream);
}

void BlockSaver::MarkCompressed(std::size_t slot)
{
    IndexItem& item = slots_.GetItem(slot);
    item.transformations = static_cast<std::uint8_t>(
        item.transformations | static_cast<unsigned int>(BlockTransformationType::Compress));
}

/// zlib gives up when it gets no memory, and the block's content goes with that.
void BlockSaver::CheckCompressed(bool isCompressed)
{
    if (isCompressed)
        return;
    damaged_ = true;
    raise(IndexSites::NotCompressed);
}

void BlockSaver::WriteIndexBuffer(std::size_t slot, std::FILE* stream)
{
    Log(LogFunctions::WriteIndexBuffer, __LINE__, "Writing index buffer ", slot, " to stream.");
    IndexItem& item = slots_.GetItem(slot);
    Block& block = slots_.GetBlock(slot);
    // A frozen index block was saved once and gave up its bytes: it is filled again.
    if (item.state == State::Frozen)
        block.Reset();
    block.SetPosition(0);
    slots_.CopyFollowingItemsToBlock(slot, block);
    item.size = block.GetLength();
    slots_.UpdatePosition(slot);
    if (Has(item.transformations, BlockTransformationType::Freeze))
        item.state = State::Rewritten;
    if (fseeko(stream, static_cast<off_t>(item.position), SEEK_SET) != 0)
        damaged_ = true;
    block.Write(stream, false);
    Log(LogFunctions::WriteIndexBuffer, __LINE__, "Index buffer ", slot, " written to stream.");
}

void BlockSaver::WriteAll(std::FILE* stream)
{
    Log(LogFunctions::WriteAll, __LINE__, "Writing all buffers to file stream ...");
    if (slots_.GetSlotCount() < SlotTable::RootEntryCount)
        raise(IndexSites::NothingToWrite);
    CheckProcess();
    std::size_t ahead = GetFirstUnsavedSlot();
    for (std::size_t slot = ahead; slot < slots_.GetSlotCount(); ++slot) {
        CompressAhead(ahead);
        WriteBuffer(slot, stream);
    }
    // Until the root index is there, nobody takes the file for a whole one.
    CheckStream(stream);
    WriteRootIndex(stream);
    if (BlockSizeLimiter const* const indexBlocks = limiters_.Find(SlotTable::IndexBlockName))
        for (std::size_t const slot : indexBlocks->blocks)
            WriteIndexBuffer(slot, stream);
    CheckStream(stream);
    Log(LogFunctions::WriteAll, __LINE__, "All buffers to file stream written.");
}

/// Sees to it that all that was written has reached the file.
void BlockSaver::CheckStream(std::FILE* stream) const
{
    if (std::fflush(stream) != 0 || std::ferror(stream) != 0 || damaged_)
        raise(IndexSites::WriteFailed);
}

void BlockSaver::FlushFrozen(std::FILE* stream)
{
    if (stream == nullptr)
        return;
    SaveCompressed();
    Log(LogFunctions::FlushFrozen, __LINE__, "Flushing frozen blocks ... ");
    for (auto& [key, limiter] : limiters_)
        if (!SlotTable::IsASpareBlock(key) && !SlotTable::IsAnIndexBlock(key))
            FlushFrozen(limiter, stream);
    Log(LogFunctions::FlushFrozen, __LINE__, "Frozen blocks flushed. ");
}

void BlockSaver::FlushFrozen(BlockSizeLimiter& limiter, std::FILE* stream)
{
    std::vector<std::size_t> const& blocks = limiter.blocks;
    while (limiter.frozenBlocks < blocks.size() &&
           slots_.GetItem(blocks[limiter.frozenBlocks]).IsFrozen())
        ++limiter.frozenBlocks;
    for (std::size_t block = limiter.frozenBlocks; block < blocks.size(); ++block) {
        std::size_t const slot = blocks[block];
        IndexItem const& item = slots_.GetItem(slot);
        if (item.IsFrozen() || !Has(item.transformations, BlockTransformationType::Freeze) ||
            slots_.GetContentLength(slot) < limiter.limit)
            continue;
        std::size_t const first = GetFirstUnsavedSlot();
        bool const isBehindAThread = slots_.GetItem(first).state == State::BeingCompressed;
        if (first < slot && !isBehindAThread)
            raise(IndexSites::SavedOutOfOrder);
        // A call that fills a block does not wait until that is compressed.
        if (item.IsOpen() && Has(item.transformations, BlockTransformationType::Compress) &&
            CompressElsewhere(slot))
            continue;
        // Whatever comes behind a block that a thread has is saved later, too.
        if (isBehindAThread)
            return;
        SaveEarly(slot, stream);
    }
}

void BlockSaver::SaveBlock(std::size_t slot, std::FILE* stream)
{
    std::uint64_t const position = slots_.GetItem(slot).position;
    Log(LogFunctions::WriteBuffer, __LINE__, "Writing buffer at position: ", position);
    bool const isReached = fseeko(stream, static_cast<off_t>(position), SEEK_SET) == 0;
    if (std::exchange(flushFailed_, false) || !isReached) {
        Log(LogFunctions::WriteBuffer, __LINE__, "File positioning failed");
        raise(IndexSites::SeekFailed);
    }
    slots_.GetBlock(slot).Write(stream, false);
}

void BlockSaver::WriteRootIndex(std::FILE* stream)
{
    Block table;
    slots_.CopyRootItemsToBlock(table);
    if (fseeko(stream, static_cast<off_t>(slots_.GetHeaderLength()), SEEK_SET) != 0)
        damaged_ = true;
    table.Write(stream, true);
}

std::size_t BlockSaver::GetFirstUnsavedSlot()
{
    while (firstUnsavedSlot_ < slots_.GetSlotCount() &&
           (slots_.GetItem(firstUnsavedSlot_).IsFrozen() ||
            SlotTable::IsAnIndexBlock(slots_.GetItem(firstUnsavedSlot_).name)))
        ++firstUnsavedSlot_;
    return firstUnsavedSlot_;
}

void BlockSaver::CompressInThreads(unsigned int count, std::FILE* stream)
{
    threads_ = std::make_unique<CompressionThreads>(count, *encoder_, SavingLevel);
    spares_.content.Reserve(count + 1);
    spares_.stream.Reserve(count + 1);
    earlyStream_ = stream;
    FlushForForks(stream);
}

/// A process that is forked from this one gets a copy of what waits in the stream, and would write
/// it when it ends. Without threads these bytes would wait until the next block is looked for: a
/// failure is told there, in the same way.
void BlockSaver::FlushForForks(std::FILE* stream)
{
    if (std::fflush(stream) != 0)
        flushFailed_ = true;
}

void BlockSaver::SaveCompressed()
{
    if (threads_ == nullptr)
        return;
    CheckProcess();
    while (threads_->HasFinishedOldest())
        SaveOldest();
}

void BlockSaver::StopThreads() noexcept
{
    if (threads_ == nullptr)
        return;
    if (!threads_->IsOwnProcess()) {
        // What waits for the threads here would wait for ever, and destroying it is waiting, too.
        static_cast<void>(threads_.release());
        return;
    }
    threads_->Stop();
    waitedSeconds_ += threads_->GetWaitedSeconds();
    while (!threads_->IsEmpty()) {
        CompressionThreads::Task task = threads_->Withdraw();
        slots_.GetBlock(task.slot).Adopt(std::move(task.content), task.length);
        slots_.GetItem(task.slot).state = State::Open;
    }
    threads_.reset();
}

bool BlockSaver::IsForked() const
{
    return (threads_ != nullptr && !threads_->IsOwnProcess()) ||
           (keeper_ != nullptr && !keeper_->IsOwnProcess());
}

double BlockSaver::GetWaitedSeconds() const
{
    return waitedSeconds_ + (threads_ == nullptr ? 0 : threads_->GetWaitedSeconds());
}

void BlockSaver::CheckProcess()
{
    if (!IsForked())
        return;
    damaged_ = true;
    raise(IndexSites::WriteFailed, "the file belongs to the process that this one was forked from");
}

/// \return whether a thread does it, or nothing is left to do
bool BlockSaver::CompressElsewhere(std::size_t slot)
{
    if (threads_ == nullptr)
        return false;
    CheckProcess();
    if (slots_.GetItem(slot).state != State::Open)
        return true;
    while (!threads_->HasRoom())
        SaveOldest();
    if (!threads_->PrepareThread())
        return false;
    Block& block = slots_.GetBlock(slot);
    std::uint32_t const length = block.GetLength();
    Zyl2Util::Buffer stream = BlockZlibCompressor::BufferFor(length, &spares_);
    threads_->Give({slot, block.Release(), length, std::move(stream), std::nullopt});
    slots_.GetItem(slot).GiveAway(length);
    MarkCompressed(slot);
    return true;
}

/// Keeps the threads busy with blocks from `slot` on, which becomes the first that none has got.
void BlockSaver::CompressAhead(std::size_t& slot)
{
    if (threads_ == nullptr)
        return;
    for (; slot < slots_.GetSlotCount() && threads_->HasRoom(); ++slot) {
        IndexItem const& item = slots_.GetItem(slot);
        if (Has(item.transformations, BlockTransformationType::Compress) &&
            item.state == State::Open && slots_.GetContentLength(slot) >= WorthAThread &&
            !CompressElsewhere(slot))
            return;
    }
}

/// Takes the oldest block that the threads have, when it is compressed.
/// \return its slot
std::size_t BlockSaver::TakeBack()
{
    CompressionThreads::Task task = threads_->TakeOldest();
    IndexItem& item = slots_.GetItem(task.slot);
    Block& block = slots_.GetBlock(task.slot);
    item.state = State::Open;
    if (!task.written && task.content.IsBorrowed()) {
        block.Adopt(std::move(task.content), task.length);
        raise(IndexSites::NotCompressed);
    }
    CheckCompressed(task.written.has_value());
    std::size_t const written = task.written.value_or(0);
    try {
        BlockZlibCompressor::CheckLength(written);
    } catch (...) {
        block.Adopt(std::move(task.content), task.length);
        throw;
    }
    spares_.LeaveContent(std::move(task.content));
    block.Adopt(std::move(task.stream), static_cast<std::uint32_t>(written));
    item.Compress(task.length);
    return task.slot;
}

void BlockSaver::SaveOldest()
{
    std::size_t const slot = TakeBack();
    if (IsToBeSavedEarly(slot))
        SaveEarly(slot, earlyStream_);
    else
        slots_.GetBlock(slot).ReleaseUnused();
}

void BlockSaver::SaveEarly(std::size_t slot, std::FILE* stream)
{
    WriteBuffer(slot, stream);
    if (threads_ != nullptr)
        FlushForForks(stream);
}

bool BlockSaver::IsToBeSavedEarly(std::size_t slot)
{
    IndexItem const& item = slots_.GetItem(slot);
    return Has(item.transformations, BlockTransformationType::Freeze) &&
           item.contentLength >= limiters_.Get(item.name).limit && GetFirstUnsavedSlot() == slot;
}

} // namespace Zyl2Wvf
