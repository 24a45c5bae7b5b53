// The container file:
//
//        0   signature, 8, and version, 4
//       12   root index length, 4: always 2784
//       16   number of root index entries, 4: always 20
//       20   20 entries of 139 bytes: slots 0 to 19
//     2800   the blocks of slots 0, 1, 2, ... back to back
//
// An index block lists the 200 slots that follow its own:
//
//        0   number of entries, 4: always 200
//        4   200 entries of 139 bytes
//
// The last slot of each group (19, 219, 419, ...) becomes an index block when it is the last spare
// one, so that the groups form a chain. Positions are not stored: readers add up sizes.

#include "Zyl2/Wvf/SlotTable.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/CopyToBlock.h"

#include <algorithm>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace IndexSites = Zyl2::Exception::Sites::Index;
using Zyl2::Exception::raise;

constexpr std::size_t ReservedNameLength = 13;
constexpr std::size_t LengthPrefix = sizeof(std::uint32_t);
constexpr std::uint32_t IndexBlockLength = 27804;
constexpr std::size_t TransformationBits = 8;

} // namespace

bool SlotTable::IsAnIndexBlock(std::string const& name)
{
    return name.compare(0, ReservedNameLength, IndexBlockName) == 0;
}

bool SlotTable::IsASpareBlock(std::string const& name)
{
    return name.compare(0, ReservedNameLength, SpareBlockName) == 0;
}

/// Takes back the slots that were appended for the pool, unless they are accepted: a failed
/// allocation must leave an index that can go on.
class SlotTable::PoolRestorer
{
public:
    explicit PoolRestorer(SlotTable& table)
        : table_(table), slots_(table.items_.size()), nextId_(table.nextId_),
          hadPool_(table.limiters_.Find(SpareBlockName) != nullptr)
    {}
    PoolRestorer(PoolRestorer const&) = delete;
    PoolRestorer& operator=(PoolRestorer const&) = delete;

    ~PoolRestorer()
    {
        if (accepted_)
            return;
        auto const slots = static_cast<std::ptrdiff_t>(slots_);
        table_.items_.erase(table_.items_.begin() + slots, table_.items_.end());
        table_.blocks_.erase(table_.blocks_.begin() + std::min(slots, static_cast<std::ptrdiff_t>(
                                                                          table_.blocks_.size())),
                             table_.blocks_.end());
        table_.nextId_ = nextId_;
        BlockSizeLimiter* const pool = table_.limiters_.Find(SpareBlockName);
        if (pool == nullptr)
            return;
        auto& spares = pool->blocks;
        spares.erase(std::remove_if(spares.begin(), spares.end(),
                                    [this](std::size_t slot) { return slot >= slots_; }),
                     spares.end());
        // An empty pool would be taken for one that ran dry.
        if (!hadPool_)
            table_.limiters_.Remove(SpareBlockName);
    }

    void Accept() { accepted_ = true; }

private:
    SlotTable& table_;
    std::size_t slots_;
    std::uint8_t nextId_;
    bool hadPool_;
    bool accepted_ = false;
};

SlotTable::SlotTable(LimiterMap& limiters, std::uint64_t headerLength)
    : limiters_(limiters), headerLength_(headerLength)
{}

std::size_t SlotTable::CreateBlock(std::string const& name)
{
    std::size_t const slot = items_.size();
    BlockSizeLimiter& limiter = limiters_.GetOrAdd(name);
    IndexItem item;
    item.id = nextId_;
    item.name = name;
    blocks_.emplace_back();
    items_.push_back(std::move(item));
    AssignSlot(limiter, slot);
    ++nextId_;
    return slot;
}

std::size_t SlotTable::CreateSpareBlock(std::string const& name)
{
    PoolRestorer restorer(*this);
    std::size_t const slot = CreateBlock(name);
    restorer.Accept();
    return slot;
}

std::size_t SlotTable::CreateEmptyBlocks(std::size_t count)
{
    for (std::size_t created = 0; created < count; ++created)
        CreateBlock(SpareBlockName);
    if (BlockSizeLimiter* const pool = limiters_.Find(SpareBlockName))
        std::reverse(pool->blocks.begin(), pool->blocks.end());
    return IndexItem::EntryLength * count + sizeof(std::uint32_t);
}

void SlotTable::FillPool()
{
    BlockSizeLimiter const* const pool = limiters_.Find(SpareBlockName);
    if (pool == nullptr) {
        PoolRestorer restorer(*this);
        rootIndexLength_ = CreateEmptyBlocks(RootEntryCount) + LengthPrefix;
        restorer.Accept();
        return;
    }
    if (pool->blocks.empty())
        raise(IndexSites::PoolRanDry);
    if (pool->blocks.size() == 1)
        TurnLastSpareIntoIndexBlock();
}

std::size_t SlotTable::TakeSpare(BlockSizeLimiter& limiter, std::string const& name)
{
    std::string assignedName(name);
    std::vector<std::size_t>& pool = limiters_.Get(SpareBlockName).blocks;
    std::size_t const slot = pool.back();
    AssignSlot(limiter, slot);
    pool.pop_back();
    items_[slot].name = std::move(assignedName);
    return slot;
}

Block SlotTable::ReturnSpare(BlockSizeLimiter& limiter)
{
    std::size_t const slot = limiter.blocks.back();
    items_[slot].name = SpareBlockName;
    limiter.blocks.pop_back();
    if (!limiter.blocks.empty())
        limiter.lengthBeforeLast -= GetLogicalLength(limiter.blocks.back());
    limiters_.Get(SpareBlockName).blocks.push_back(slot);
    return std::move(blocks_[slot]);
}

void SlotTable::TurnLastSpareIntoIndexBlock()
{
    BlockSizeLimiter& indexBlocks = limiters_.GetOrAdd(IndexBlockName, IndexBlockLength);
    std::vector<std::size_t>& pool = limiters_.Get(SpareBlockName).blocks;
    std::size_t const slot = pool.back();

    PoolRestorer restorer(*this);
    CreateEmptyBlocks(IndexBlockEntryCount);
    Block table;
    CopyFollowingItemsToBlock(slot, table);
    AssignSlot(indexBlocks, slot);
    restorer.Accept();

    // The slot was the pool's only one before, so the reversal moved it to the front or the end.
    pool.erase(std::find(pool.begin(), pool.end(), slot));
    IndexItem& item = items_[slot];
    item.name = IndexBlockName;
    item.size = table.GetLength();
    blocks_[slot] = std::move(table);
    AddTransformation(indexBlocks, BlockTransformationType::Freeze, indexBlocks.blocks.size());
    UpdatePosition(slot);
}

void SlotTable::AssignSlot(BlockSizeLimiter& limiter, std::size_t slot)
{
    std::uint64_t const lastLength =
        limiter.blocks.empty() ? 0 : GetLogicalLength(limiter.blocks.back());
    limiter.blocks.push_back(slot);
    limiter.lengthBeforeLast += lastLength;
}

void SlotTable::AddTransformation(BlockSizeLimiter& limiter, BlockTransformationType type,
                                  std::size_t count)
{
    for (std::size_t bit = 0; bit < TransformationBits; ++bit)
        if ((static_cast<unsigned int>(type) >> bit & 1U) != 0)
            MarkBlocks(limiter, bit, count);
}

void SlotTable::MarkBlocks(BlockSizeLimiter& limiter, std::size_t bit, std::size_t count)
{
    std::size_t& marked = limiter.markedBlocks[bit];
    for (; marked < count; ++marked) {
        std::uint8_t& transformations = items_[limiter.blocks[marked]].transformations;
        transformations = static_cast<std::uint8_t>(transformations | 1U << bit);
    }
}

void SlotTable::UpdatePosition(std::size_t slot)
{
    if (slot == 0) {
        items_[slot].position = headerLength_ + rootIndexLength_;
        return;
    }
    IndexItem const& previous = items_[slot - 1];
    // An index block gets its size when it is made, at a time when the block before it may not be
    // saved yet; its position is known only now.
    if (IsAnIndexBlock(previous.name))
        UpdatePosition(slot - 1);
    items_[slot].position = previous.position + previous.size;
}

void SlotTable::CopyFollowingItemsToBlock(std::size_t slot, Block& block) const
{
    if (slot + IndexBlockEntryCount >= items_.size())
        raise(IndexSites::TooFewSlotsFollow);
    IndexItem const* const first = items_.data() + slot + 1;
    CopyToBlock(block, first, first + IndexBlockEntryCount);
}

void SlotTable::CopyRootItemsToBlock(Block& block) const
{
    CopyToBlock(block, items_.data(), items_.data() + RootEntryCount);
}

std::uint32_t SlotTable::GetContentLength(std::size_t slot) const
{
    IndexItem const& item = items_[slot];
    bool const isRemembered = item.state == IndexItem::State::Compressed ||
                              item.state == IndexItem::State::BeingCompressed;
    return isRemembered ? item.contentLength : blocks_[slot].GetLength();
}

std::uint64_t SlotTable::GetLogicalLength(std::size_t slot) const
{
    IndexItem const& item = items_[slot];
    return item.IsOpen() ? blocks_[slot].GetPosition() : item.contentLength;
}

} // namespace Zyl2Wvf
