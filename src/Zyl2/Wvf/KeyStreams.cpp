#include "Zyl2/Wvf/KeyStreams.h"

#include "Zyl2/Wvf/BlockKeeper.h"

#include <algorithm>

namespace Zyl2Wvf {

KeyStreams::KeyStreams(SlotTable& slots, LimiterMap& limiters, BlockSaver& saver)
    : slots_(slots), limiters_(limiters), saver_(saver)
{}

std::size_t KeyStreams::AddBlock(std::string const& name)
{
    if (SlotTable::IsASpareBlock(name))
        return slots_.CreateSpareBlock(name);
    slots_.FillPool();
    BlockSizeLimiter& limiter = limiters_.GetOrAdd(name);
    std::size_t const slot = slots_.TakeSpare(limiter, name);
    if (limiter.blocks.size() > 1)
        saver_.HandOn(limiter);
    return slot;
}

std::size_t KeyStreams::GetWritingBlock(Key& key)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return AddBlock(std::string(key.name_));
    std::size_t const slot = limiter->blocks.back();
    // What was put behind a full block may have been taken back, when that one was compressed.
    if (!slots_.GetItem(slot).IsOpen() || slots_.GetBlock(slot).GetLength() >= limiter->limit)
        return AddBlock(std::string(key.name_));
    return slot;
}

unsigned char* KeyStreams::PutInPlace(Key& key, std::size_t size)
{
    std::size_t const slot = GetSlotWithRoom(key, size);
    if (slots_.GetItem(slot).IsFrozen())
        Zyl2::Exception::raise(Zyl2::Exception::Sites::Index::BytesIntoFrozenBlock);
    Block& block = slots_.GetBlock(slot);
    BlockSizeLimiter const& limiter = *Find(key);
    if (limiter.keeper != nullptr)
        limiter.keeper->MakeRoom(block, slot, limiter.lengthBeforeLast, size, limiter.limit);
    return block.Extend(size);
}

void KeyStreams::TakeBack(Key& key, std::size_t size, std::size_t blocks)
{
    BlockSizeLimiter& limiter = *Find(key);
    if (limiter.blocks.size() == blocks)
        slots_.GetBlock(limiter.blocks.back()).Retract(size);
    else
        saver_.Keep(slots_.ReturnSpare(limiter));
}

unsigned char* KeyStreams::PutTogether(Key& key, std::size_t size)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return nullptr;
    std::size_t const slot = limiter->blocks.back();
    Block& block = slots_.GetBlock(slot);
    std::uint64_t const most = std::min<std::uint64_t>(limiter->limit, Block::MaximumLength);
    if (!slots_.GetItem(slot).IsOpen() || std::uint64_t(block.GetLength()) + size > most)
        return nullptr;
    return block.Extend(size);
}

std::size_t KeyStreams::GetPosition(Key& key)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return 0;
    return limiter->lengthBeforeLast + slots_.GetLogicalLength(limiter->blocks.back());
}

unsigned char const* KeyStreams::GetLastBytes(Key& key, std::size_t size)
{
    Block const& block = slots_.GetBlock(Find(key)->blocks.back());
    return block.GetData() + block.GetPosition() - size;
}

std::size_t KeyStreams::GetBlockCount(Key& key)
{
    BlockSizeLimiter const* const limiter = Find(key);
    return limiter == nullptr ? 0 : limiter->blocks.size();
}

void KeyStreams::AddTransformation(Key& key, BlockTransformationType type, std::size_t count)
{
    if (BlockSizeLimiter* const limiter = Find(key))
        slots_.AddTransformation(*limiter, type, count);
}

void KeyStreams::AddTransformation(std::string const& name, BlockTransformationType type)
{
    BlockSizeLimiter* const limiter = limiters_.Find(name);
    if (limiter == nullptr)
        return;
    // Spare blocks come and go at the pool's end: old marks say nothing of today's blocks.
    if (SlotTable::IsASpareBlock(name))
        limiter->markedBlocks.fill(0);
    slots_.AddTransformation(*limiter, type, limiter->blocks.size());
}

/// The key's limiter; null for a key that nothing was ever put under.
BlockSizeLimiter* KeyStreams::Find(Key& key)
{
    if (key.limiter_ == nullptr)
        key.limiter_ = limiters_.Find(key.name_);
    return key.limiter_;
}

std::size_t KeyStreams::GetSlotWithRoom(Key& key, std::uint64_t size)
{
    std::size_t const slot = GetWritingBlock(key);
    std::uint64_t const length = slots_.GetBlock(slot).GetLength();
    // Content that is too large for any block is refused by the block itself.
    bool const fitsIntoEmptyBlock = size <= Block::MaximumLength;
    bool const fitsHere = fitsIntoEmptyBlock && length + size <= Block::MaximumLength;
    if (fitsHere || !fitsIntoEmptyBlock)
        return slot;
    return AddBlock(std::string(key.name_));
}

} // namespace Zyl2Wvf
