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

#include "Zyl2/Wvf/Index.h"

#include "Zyl2/Log/Statement.h"
#include "Zyl2/Wvf/BlockZlibCompressor.h"

#include <algorithm>

namespace Zyl2Wvf {

namespace {

constexpr char const* Source = "Zyl2/Wvf/Index";
constexpr std::size_t ReservedNameLength = 13;
constexpr std::size_t LengthPrefix = sizeof(std::uint32_t);
constexpr std::uint32_t IndexBlockLength = 27804;
constexpr int SavingLevel = 6;
constexpr std::size_t TransformationBits = 8;

} // namespace

char const* const Index::IndexBlockName = "\x0bIndex Block ";
char const* const Index::SpareBlockName = "\x0b"
                                          "Empty Block ";

bool Index::IsAnIndexBlock(std::string const& name)
{
    return name.compare(0, ReservedNameLength, IndexBlockName) == 0;
}

bool Index::IsASpareBlock(std::string const& name)
{
    return name.compare(0, ReservedNameLength, SpareBlockName) == 0;
}

/// Takes back the slots that were appended for the pool, unless they are accepted: a failed
/// allocation must leave an index that can go on.
class Index::PoolRestorer
{
public:
    explicit PoolRestorer(Index& index)
        : index_(index), slots_(index.items_.size()), nextId_(index.nextId_),
          hadPool_(index.limiters_.count(SpareBlockName) != 0)
    {}
    PoolRestorer(PoolRestorer const&) = delete;
    PoolRestorer& operator=(PoolRestorer const&) = delete;

    ~PoolRestorer()
    {
        if (accepted_)
            return;
        auto const slots = static_cast<std::ptrdiff_t>(slots_);
        index_.items_.erase(index_.items_.begin() + slots, index_.items_.end());
        index_.blocks_.erase(index_.blocks_.begin() + std::min(slots, static_cast<std::ptrdiff_t>(
                                                                          index_.blocks_.size())),
                             index_.blocks_.end());
        index_.nextId_ = nextId_;
        auto const pool = index_.limiters_.find(SpareBlockName);
        if (pool == index_.limiters_.end())
            return;
        auto& spares = pool->second.blocks;
        spares.erase(std::remove_if(spares.begin(), spares.end(),
                                    [this](std::size_t slot) { return slot >= slots_; }),
                     spares.end());
        // An empty pool would be taken for one that ran dry.
        if (!hadPool_)
            index_.limiters_.erase(pool);
    }

    void Accept() { accepted_ = true; }

private:
    Index& index_;
    std::size_t slots_;
    std::uint8_t nextId_;
    bool hadPool_;
    bool accepted_ = false;
};

Index::Index(std::uint64_t headerLength) : headerLength_(headerLength) {}

std::size_t Index::CreateBlock(std::string const& name)
{
    std::size_t const slot = items_.size();
    BlockSizeLimiter& limiter = GetOrAddLimiter(name);
    IndexItem item;
    item.id = nextId_;
    item.name = name;
    blocks_.emplace_back();
    items_.push_back(std::move(item));
    AssignSlot(limiter, slot);
    ++nextId_;
    return slot;
}

std::size_t Index::CreateEmptyBlocks(std::size_t count)
{
    for (std::size_t created = 0; created < count; ++created)
        CreateBlock(SpareBlockName);
    auto const pool = limiters_.find(SpareBlockName);
    if (pool != limiters_.end())
        std::reverse(pool->second.blocks.begin(), pool->second.blocks.end());
    return IndexItem::EntryLength * count + sizeof(std::uint32_t);
}

std::size_t Index::AddBlock(std::string const& name)
{
    if (IsASpareBlock(name)) {
        PoolRestorer restorer(*this);
        std::size_t const created = CreateBlock(name);
        restorer.Accept();
        return created;
    }
    FillPool();
    BlockSizeLimiter& limiter = GetOrAddLimiter(name);
    std::string assignedName(name);
    std::vector<std::size_t>& pool = GetLimiter(SpareBlockName).blocks;
    std::size_t const slot = pool.back();
    AssignSlot(limiter, slot);
    pool.pop_back();
    items_[slot].name = std::move(assignedName);
    if (limiter.blocks.size() > 1)
        HandOn(limiter);
    return slot;
}

/// A key that goes on after a full block is likely to fill another one: gives the new block what
/// memory there is.
void Index::HandOn(BlockSizeLimiter const& limiter)
{
    std::size_t const full = limiter.blocks[limiter.blocks.size() - 2];
    if (limiter.compressesFullBlocks && !items_[full].frozen) {
        Compress(full);
        blocks_[full].ReleaseUnused();
    }
    if (spares_.content.GetSize() != 0)
        blocks_[limiter.blocks.back()].Adopt(std::move(spares_.content), 0);
}

std::size_t Index::GetWritingBlockIndex(std::string const& name)
{
    Key key(name);
    return GetWritingBlockIndex(key);
}

std::size_t Index::GetWritingBlockIndex(Key& key)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return AddBlock(std::string(key.name_));
    std::size_t const slot = limiter->blocks.back();
    if (items_[slot].frozen || blocks_[slot].GetLength() >= limiter->limit)
        return AddBlock(std::string(key.name_));
    return slot;
}

void Index::Put(std::string const& key, void const* const& data, std::size_t size)
{
    blocks_[GetUnfrozenSlotWithRoom(key, size)].Append(data, size);
}

unsigned char* Index::PutInPlace(std::string const& key, std::size_t size)
{
    return blocks_[GetUnfrozenSlotWithRoom(key, size)].Extend(size);
}

unsigned char* Index::PutTogether(Key& key, std::size_t size)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return nullptr;
    std::size_t const slot = limiter->blocks.back();
    Block& block = blocks_[slot];
    std::uint64_t const most = std::min<std::uint64_t>(limiter->limit, Block::MaximumLength);
    if (items_[slot].frozen || std::uint64_t(block.GetLength()) + size > most)
        return nullptr;
    return block.Extend(size);
}

std::size_t Index::GetBlockPosition(std::string const& key)
{
    Key found(key);
    return GetBlockPosition(found);
}

std::size_t Index::GetBlockPosition(Key& key)
{
    BlockSizeLimiter const* const limiter = Find(key);
    if (limiter == nullptr || limiter->blocks.empty())
        return 0;
    return limiter->lengthBeforeLast + GetLogicalLength(limiter->blocks.back());
}

void Index::AddTransformation(std::string const& name, BlockTransformationType type)
{
    auto const found = limiters_.find(name);
    if (found == limiters_.end())
        return;
    // The pool shrinks at its end, so what was marked there says nothing of what is there now.
    if (IsASpareBlock(name))
        found->second.markedBlocks.fill(0);
    for (std::size_t bit = 0; bit < TransformationBits; ++bit)
        if ((static_cast<unsigned int>(type) >> bit & 1U) != 0)
            MarkBlocks(found->second, bit);
}

void Index::CompressFullBlocks(std::string const& name)
{
    GetOrAddLimiter(name).compressesFullBlocks = true;
}

void Index::UpdateBlockPositionInStream(std::size_t slot)
{
    if (slot == 0) {
        items_[slot].position = headerLength_ + rootIndexLength_;
        return;
    }
    IndexItem const& previous = items_[slot - 1];
    // An index block gets its size when it is made, at a time when the block before it may not be
    // saved yet; its position is known only now.
    if (IsAnIndexBlock(previous.name))
        UpdateBlockPositionInStream(slot - 1);
    items_[slot].position = previous.position + previous.size;
}

void Index::WriteBufferToFileStream(std::size_t slot, std::FILE* stream)
{
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Writing buffer ", slot,
                     " to stream.");
    IndexItem& item = items_[slot];
    Block& block = blocks_[slot];
    if (item.frozen)
        Zyl2::Exception::raise(Zyl2::Exception::InvalidObjectState(), Source, __LINE__,
                               BOOST_CURRENT_FUNCTION);
    std::uint32_t const length = GetContentLength(slot);
    if (length != 0)
        Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Buffer length: ", length);
    bool const compressed = Has(item.transformations, BlockTransformationType::Compress);
    if (compressed)
        Compress(slot);

    try {
        if (compressed)
            Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__,
                             "Buffer length after transformations: ", block.GetLength());
        item.size = block.GetLength();
        UpdateBlockPositionInStream(slot);
        if (Has(item.transformations, BlockTransformationType::Freeze)) {
            item.frozen = true;
            item.frozenLength = length;
        }
        SaveBlock(slot, stream);
    } catch (...) {
        // What was transformed can't be saved a second time.
        item.compressed = false;
        block.Reset();
        damaged_ = true;
        throw;
    }
    item.compressed = false;
    Zyl2Util::Buffer saved = block.Release();
    if (compressed)
        spares_.stream = std::move(saved);
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Buffer ", slot,
                     " written to stream.");
}

/// Does nothing to a block that is compressed already.
void Index::Compress(std::size_t slot)
{
    IndexItem& item = items_[slot];
    if (item.compressed)
        return;
    Block& block = blocks_[slot];
    std::uint32_t const length = block.GetLength();
    BlockZlibCompressor compress(SavingLevel, spares_);
    compress(block);
    CheckCompressed(block);
    item.transformations = static_cast<std::uint8_t>(
        item.transformations | static_cast<unsigned int>(BlockTransformationType::Compress));
    item.compressed = true;
    item.contentLength = length;
}

/// zlib gives up when it gets no memory, and the block's content goes with that.
void Index::CheckCompressed(Block const& block)
{
    if (block.GetLength() != 0)
        return;
    damaged_ = true;
    Zyl2::Exception::raise(Zyl2::Exception::MemoryAllocationException(), Source, __LINE__,
                           BOOST_CURRENT_FUNCTION);
}

void Index::WriteIndexBufferToFileStream(std::size_t slot, std::FILE* stream)
{
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Writing index buffer ", slot,
                     " to stream.");
    IndexItem& item = items_[slot];
    Block& block = blocks_[slot];
    bool const freezes = Has(item.transformations, BlockTransformationType::Freeze);
    if (item.frozen) {
        if (freezes)
            item.frozen = false;
        if (!item.detached) {
            block.Reset();
            item.detached = true;
        }
    }
    block.SetPosition(0);
    CopyFollowingItemsToBlock(slot, block);
    item.size = block.GetLength();
    UpdateBlockPositionInStream(slot);
    if (freezes)
        item.frozen = true;
    if (fseeko(stream, static_cast<off_t>(item.position), SEEK_SET) != 0)
        damaged_ = true;
    block.Write(stream, false);
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Index buffer ", slot,
                     " written to stream.");
}

void Index::WriteAllBuffersToFileStream(std::FILE* stream)
{
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__,
                     "Writing all buffers to file stream ...");
    if (items_.size() < RootEntryCount)
        Zyl2::Exception::raise(Zyl2::Exception::InvalidObjectState(), Source, __LINE__,
                               BOOST_CURRENT_FUNCTION);
    for (std::size_t slot = GetFirstUnsavedSlot(); slot < items_.size(); ++slot)
        WriteBufferToFileStream(slot, stream);
    // Until the root index is there, nobody takes the file for a whole one.
    CheckStream(stream);
    WriteRootIndex(stream);
    auto const indexBlocks = limiters_.find(IndexBlockName);
    if (indexBlocks != limiters_.end())
        for (std::size_t const slot : indexBlocks->second.blocks)
            WriteIndexBufferToFileStream(slot, stream);
    CheckStream(stream);
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__,
                     "All buffers to file stream written.");
}

/// Sees to it that all that was written has reached the file.
void Index::CheckStream(std::FILE* stream) const
{
    if (std::fflush(stream) != 0 || std::ferror(stream) != 0 || damaged_)
        Zyl2::Exception::raise(Zyl2::Exception::FileWriteException("Unable to write to file"),
                               Source, __LINE__,
                               "void Zyl2Wvf::Index::WriteAllBuffersToFileStream(FILE*)");
}

void Index::FlushFrozen(std::FILE* stream)
{
    if (stream == nullptr)
        return;
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Flushing frozen blocks ... ");
    for (auto& [key, limiter] : limiters_)
        if (!IsASpareBlock(key) && !IsAnIndexBlock(key))
            FlushFrozen(limiter, stream);
    Zyl2::Log::write(Source, BOOST_CURRENT_FUNCTION, __LINE__, "Frozen blocks flushed. ");
}

BlockSizeLimiter& Index::GetLimiter(std::string const& key)
{
    auto const found = limiters_.find(key);
    if (found == limiters_.end())
        Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), Source, __LINE__,
                               BOOST_CURRENT_FUNCTION);
    return found->second;
}

BlockSizeLimiter& Index::GetOrAddLimiter(std::string const& name)
{
    auto const found = limiters_.find(name);
    return found != limiters_.end() ? found->second : limiters_[name];
}

/// The key's limiter; null for a key that nothing was ever put under.
BlockSizeLimiter* Index::Find(Key& key)
{
    if (key.limiter_ == nullptr) {
        auto const found = limiters_.find(key.name_);
        if (found != limiters_.end())
            key.limiter_ = &found->second;
    }
    return key.limiter_;
}

std::size_t Index::GetSlotWithRoom(Key& key, std::uint64_t size)
{
    std::size_t const slot = GetWritingBlockIndex(key);
    std::uint64_t const length = blocks_[slot].GetLength();
    // What can't fit into any block goes nowhere; the block itself says so.
    bool const fitsIntoEmptyBlock = size <= Block::MaximumLength;
    bool const fitsHere = fitsIntoEmptyBlock && length + size <= Block::MaximumLength;
    return fitsHere || !fitsIntoEmptyBlock ? slot : AddBlock(std::string(key.name_));
}

std::size_t Index::GetUnfrozenSlotWithRoom(std::string const& key, std::uint64_t size)
{
    Key found(key);
    std::size_t const slot = GetSlotWithRoom(found, size);
    if (items_[slot].frozen)
        Zyl2::Exception::raise(Zyl2::Exception::KeyNotFound(), Source, __LINE__,
                               "void Zyl2Wvf::Index::Put(const std::string&, const void* const&, "
                               "std::size_t)");
    return slot;
}

/// Sees to it that the pool has a slot to hand out.
void Index::FillPool()
{
    auto const pool = limiters_.find(SpareBlockName);
    if (pool == limiters_.end()) {
        PoolRestorer restorer(*this);
        rootIndexLength_ = CreateEmptyBlocks(RootEntryCount) + LengthPrefix;
        restorer.Accept();
        return;
    }
    if (pool->second.blocks.empty())
        Zyl2::Exception::raise(
            Zyl2::Exception::InvalidObjectState("This point should not be reached"), Source,
            __LINE__, BOOST_CURRENT_FUNCTION);
    if (pool->second.blocks.size() == 1)
        TurnLastSpareIntoIndexBlock();
}

void Index::TurnLastSpareIntoIndexBlock()
{
    BlockSizeLimiter& indexBlocks =
        limiters_.try_emplace(IndexBlockName, IndexBlockLength).first->second;
    std::vector<std::size_t>& pool = GetLimiter(SpareBlockName).blocks;
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
    AddTransformation(IndexBlockName, BlockTransformationType::Freeze);
    UpdateBlockPositionInStream(slot);
}

void Index::AssignSlot(BlockSizeLimiter& limiter, std::size_t slot)
{
    std::uint64_t const lastLength =
        limiter.blocks.empty() ? 0 : GetLogicalLength(limiter.blocks.back());
    limiter.blocks.push_back(slot);
    limiter.lengthBeforeLast += lastLength;
}

/// The block's length without regard to whether it is compressed.
std::uint32_t Index::GetContentLength(std::size_t slot) const
{
    return items_[slot].compressed ? items_[slot].contentLength : blocks_[slot].GetLength();
}

/// That of a key's last block, which is never found compressed: only blocks before it wait in that
/// state to be saved.
std::uint64_t Index::GetLogicalLength(std::size_t slot) const
{
    IndexItem const& item = items_[slot];
    return item.frozen ? item.frozenLength : blocks_[slot].GetPosition();
}

void Index::MarkBlocks(BlockSizeLimiter& limiter, std::size_t bit)
{
    std::size_t& marked = limiter.markedBlocks[bit];
    for (; marked < limiter.blocks.size(); ++marked) {
        std::uint8_t& transformations = items_[limiter.blocks[marked]].transformations;
        transformations = static_cast<std::uint8_t>(transformations | 1U << bit);
    }
}

void Index::FlushFrozen(BlockSizeLimiter& limiter, std::FILE* stream)
{
    std::vector<std::size_t> const& blocks = limiter.blocks;
    while (limiter.frozenBlocks < blocks.size() && items_[blocks[limiter.frozenBlocks]].frozen)
        ++limiter.frozenBlocks;
    for (std::size_t block = limiter.frozenBlocks; block < blocks.size(); ++block) {
        std::size_t const slot = blocks[block];
        IndexItem const& item = items_[slot];
        if (item.frozen || !Has(item.transformations, BlockTransformationType::Freeze) ||
            GetContentLength(slot) < limiter.limit)
            continue;
        if (GetFirstUnsavedSlot() < slot)
            Zyl2::Exception::raise(Zyl2::Exception::NotYetImplemented(), Source, __LINE__,
                                   BOOST_CURRENT_FUNCTION);
        WriteBufferToFileStream(slot, stream);
    }
}

void Index::SaveBlock(std::size_t slot, std::FILE* stream)
{
    constexpr char const* function =
        "void Zyl2Wvf::Index::WriteBufferToFileStream(std::size_t, FILE*)";
    std::uint64_t const position = items_[slot].position;
    Zyl2::Log::write(Source, function, __LINE__, "Writing buffer at position: ", position);
    if (fseeko(stream, static_cast<off_t>(position), SEEK_SET) != 0) {
        Zyl2::Log::write(Source, function, __LINE__, "File positioning failed");
        Zyl2::Exception::raise(Zyl2::Exception::FileWriteException("Saving the buffer failed"),
                               Source, __LINE__, function);
    }
    blocks_[slot].Write(stream, false);
}

void Index::WriteRootIndex(std::FILE* stream)
{
    Block table;
    CopyToBlock(table, items_.data(), items_.data() + RootEntryCount);
    if (fseeko(stream, static_cast<off_t>(headerLength_), SEEK_SET) != 0)
        damaged_ = true;
    table.Write(stream, true);
}

std::size_t Index::GetFirstUnsavedSlot()
{
    while (firstUnsavedSlot_ < items_.size() &&
           (items_[firstUnsavedSlot_].frozen || IsAnIndexBlock(items_[firstUnsavedSlot_].name)))
        ++firstUnsavedSlot_;
    return firstUnsavedSlot_;
}

void Index::CopyFollowingItemsToBlock(std::size_t slot, Block& block) const
{
    if (slot + IndexBlockEntryCount >= items_.size())
        Zyl2::Exception::raise(Zyl2::Exception::InvalidObjectState(), Source, __LINE__,
                               BOOST_CURRENT_FUNCTION);
    IndexItem const* const first = items_.data() + slot + 1;
    CopyToBlock(block, first, first + IndexBlockEntryCount);
}

} // namespace Zyl2Wvf
