#include "Zyl2/Wvf/BlockSaver.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Wvf/BlockZlibCompressor.h"

#include <utility>

namespace Zyl2Wvf {

namespace {

namespace Sites = Zyl2::Exception::Sites::Index;
using State = IndexItem::State;
using Zyl2::Exception::raise;

constexpr int SavingLevel = 6;

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
    Zyl2::Log::write(Sites::Source, function, line, pieces...);
}

} // namespace

BlockSaver::BlockSaver(SlotTable& slots, LimiterMap& limiters) : slots_(slots), limiters_(limiters)
{}

void BlockSaver::WriteBuffer(std::size_t slot, std::FILE* stream)
{
    Log(LogFunctions::WriteBuffer, __LINE__, "Writing buffer ", slot, " to stream.");
    IndexItem& item = slots_.GetItem(slot);
    Block& block = slots_.GetBlock(slot);
    if (item.IsFrozen())
        raise(Sites::SavedBefore);
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
    } catch (...) {
        if (!item.IsFrozen())
            item.state = State::Open;
        block.Reset();
        damaged_ = true;
        throw;
    }
    Zyl2Util::Buffer saved = block.Release();
    if (compressed)
        spares_.stream = std::move(saved);
    Log(LogFunctions::WriteBuffer, __LINE__, "Buffer ", slot, " written to stream.");
}

void BlockSaver::HandOn(BlockSizeLimiter const& limiter)
{
    std::size_t const full = limiter.blocks[limiter.blocks.size() - 2];
    if (limiter.compressesFullBlocks && !slots_.GetItem(full).IsFrozen()) {
        Compress(full);
        slots_.GetBlock(full).ReleaseUnused();
    }
    if (spares_.content.GetSize() != 0)
        slots_.GetBlock(limiter.blocks.back()).Adopt(std::move(spares_.content), 0);
}

/// Does nothing to a block that is compressed already.
void BlockSaver::Compress(std::size_t slot)
{
    IndexItem& item = slots_.GetItem(slot);
    if (item.state == State::Compressed)
        return;
    Block& block = slots_.GetBlock(slot);
    std::uint32_t const length = block.GetLength();
    BlockZlibCompressor compress(SavingLevel, *encoder_, spares_);
    compress(block);
    CheckCompressed(block);
    item.transformations = static_cast<std::uint8_t>(
        item.transformations | static_cast<unsigned int>(BlockTransformationType::Compress));
    item.Compress(length);
}

/// zlib gives up when it gets no memory, and the block's content goes with that.
void BlockSaver::CheckCompressed(Block const& block)
{
    if (block.GetLength() != 0)
        return;
    damaged_ = true;
    raise(Sites::NotCompressed);
}

void BlockSaver::WriteIndexBuffer(std::size_t slot, std::FILE* stream)
{
    Log(LogFunctions::WriteIndexBuffer, __LINE__, "Writing index buffer ", slot, " to stream.");
    IndexItem& item = slots_.GetItem(slot);
    Block& block = slots_.GetBlock(slot);
    // The first time the block was given up when it was saved as one of all.
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
        raise(Sites::NothingToWrite);
    for (std::size_t slot = GetFirstUnsavedSlot(); slot < slots_.GetSlotCount(); ++slot)
        WriteBuffer(slot, stream);
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
        raise(Sites::WriteFailed);
}

void BlockSaver::FlushFrozen(std::FILE* stream)
{
    if (stream == nullptr)
        return;
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
        if (GetFirstUnsavedSlot() < slot)
            raise(Sites::SavedOutOfOrder);
        WriteBuffer(slot, stream);
    }
}

void BlockSaver::SaveBlock(std::size_t slot, std::FILE* stream)
{
    std::uint64_t const position = slots_.GetItem(slot).position;
    Log(LogFunctions::WriteBuffer, __LINE__, "Writing buffer at position: ", position);
    if (fseeko(stream, static_cast<off_t>(position), SEEK_SET) != 0) {
        Log(LogFunctions::WriteBuffer, __LINE__, "File positioning failed");
        raise(Sites::SeekFailed);
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

} // namespace Zyl2Wvf
