#ifndef ZYL2_WVF_KEYSTREAMS_H
#define ZYL2_WVF_KEYSTREAMS_H

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockSaver.h"
#include "Zyl2/Wvf/CopyToBlock.h"
#include "Zyl2/Wvf/LimiterMap.h"
#include "Zyl2/Wvf/SlotTable.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Zyl2Wvf {

/// The keys' streams of bytes. What is put under a key goes to its most recent block until that one
/// is full; then the key gets a new slot.
class KeyStreams
{
public:
    /// A key that is looked up once, however often it is used. Belongs to the index that it was
    /// used with first.
    class Key
    {
    public:
        /// \param name has to outlive the key
        explicit Key(std::string_view name) : name_(name) {}

    private:
        friend class KeyStreams;

        std::string_view name_;
        BlockSizeLimiter* limiter_ = nullptr;
    };

    KeyStreams(SlotTable& slots, LimiterMap& limiters, BlockSaver& saver);

    /// Assigns a slot of the pool to `name`.
    std::size_t AddBlock(std::string const& name);

    /// Slot that the next write goes to.
    std::size_t GetWritingBlock(Key& key);

    /// Appends `value` to the key's current block.
    template <typename T>
    void Put(Key& key, T const& value)
    {
        std::size_t const slot = GetSlotWithRoom(key, EncodedSize(value));
        if (slots_.GetItem(slot).IsFrozen())
            Zyl2::Exception::raise(Zyl2::Exception::Sites::Index::ValueIntoFrozenBlock);
        Block& block = slots_.GetBlock(slot);
        Block::PositionType const start = block.GetPosition();
        try {
            CopyToBlock(block, value);
        } catch (...) {
            // No reader can make sense of a part, so the file must not pass for whole.
            if (block.GetPosition() != start)
                saver_.MarkDamaged();
            throw;
        }
    }

    /// Makes room for `size` bytes in the key's current block.
    unsigned char* PutInPlace(Key& key, std::size_t size);

    /// Takes the `size` bytes back that were put last. \param blocks the key had before
    void TakeBack(Key& key, std::size_t size, std::size_t blocks);

    /// As `PutInPlace`, where that can be without parting the bytes; null where it can't.
    unsigned char* PutTogether(Key& key, std::size_t size);

    /// Logical offset at which the next `Put` starts; 0 for an unknown key.
    std::size_t GetPosition(Key& key);

    /// The bytes that were put last, of a key that has some in its last block.
    unsigned char const* GetLastBytes(Key& key, std::size_t size);

    /// Blocks that the key has; none for an unknown key.
    std::size_t GetBlockCount(Key& key);

    /// Sets the bit of `type` on every block that the key has now.
    void AddTransformation(std::string const& name, BlockTransformationType type);

    /// Sets it on the first `count` of them.
    void AddTransformation(Key& key, BlockTransformationType type, std::size_t count);

private:
    BlockSizeLimiter* Find(Key& key);
    std::size_t GetSlotWithRoom(Key& key, std::uint64_t size);

    SlotTable& slots_;
    LimiterMap& limiters_;
    BlockSaver& saver_;
};

} // namespace Zyl2Wvf

#endif
