#ifndef MOXREAD_HEAVYDATA_H
#define MOXREAD_HEAVYDATA_H

#include "moxread/BlockLoader.h"
#include "moxread/BlocksAhead.h"
#include "moxread/Buffer.h"
#include "moxread/Container.h"
#include "moxread/Export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace MoxRead {

/// Called while work goes on: how much of it is done, and how much there is in all.
using ProgressVisitor = std::function<void(std::uint64_t done, std::uint64_t all)>;

/// The stream of the datasets' values, of which one block at a time is in memory; with threads, a
/// few more of those that are asked for next.
class MOXREAD_EXPORT HeavyData
{
public:
    explicit HeavyData(Container const& container);
    ~HeavyData() = default;
    HeavyData(HeavyData&&) = default;
    HeavyData& operator=(HeavyData&&) = default;
    HeavyData(HeavyData const&) = delete;
    HeavyData& operator=(HeavyData const&) = delete;

    /// The number of bytes in all blocks.
    std::uint64_t length() const;

    /// Whether these bytes exist and lie in one block.
    bool contains(std::uint64_t position, std::uint64_t count) const;

    /// The bytes from a position on, at least as many as `contains` agrees to. Valid until the next
    /// call. Calls in ascending order of the positions load each block once.
    std::uint8_t const* bytesAt(std::uint64_t position);

    /// Tells which positions `bytesAt` will be called with, in this order, so that threads can load
    /// their blocks ahead; without threads it does nothing. Other calls in between take time, but
    /// do no harm. Where none is named, the threads end.
    void expect(std::vector<std::uint64_t> const& positions);

    /// The number of the block that holds the byte at a position, from 0.
    std::size_t blockAt(std::uint64_t position) const;

    /// Reads all blocks in small pieces, to see whether they are sound. zlib is the judge of that,
    /// whatever else inflates: others take some streams, of intact values, that zlib refuses.
    void check(ProgressVisitor const& tell = {}) const;

private:
    struct Block
    {
        Slot slot;
        std::uint64_t start = 0;
        std::uint64_t length = 0;
    };

    Block const* find(std::uint64_t position) const;

    void load(Block const& block);
    void checkHere(ProgressVisitor const& tell) const;
    void checkInThreads(ProgressVisitor const& tell) const;

    Container const* container_;
    BlockLoader loader_;
    std::vector<Block> blocks_;
    Block const* loaded_ = nullptr;
    Buffer bytes_;
    std::unique_ptr<BlocksAhead> ahead_;
};

} // namespace MoxRead

#endif
