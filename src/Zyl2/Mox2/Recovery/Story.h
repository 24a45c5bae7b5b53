#ifndef ZYL2_MOX2_RECOVERY_STORY_H
#define ZYL2_MOX2_RECOVERY_STORY_H

#include <Zyl2/Mox2/InterruptedRun.h>

#include "Zyl2/Mox2/Recovery/LogContents.h"
#include "Zyl2/Mox2/Recovery/Recorder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// A call of the log, with what happened in it.
struct CallOfRun
{
    struct Filled
    {
        std::uint64_t position;
        std::uint64_t length;
        std::uint32_t checksum;
    };

    LogContents::Record const* call = nullptr;
    std::optional<Filled> filled;
    Outcome outcome = Outcome::Returned;
    std::uint32_t nodes = 0;
    std::int64_t time = 0;
};

/// A block of values that was begun in the file of that number.
struct BlockBegun
{
    /// \throws DamagedRecord it is none
    explicit BlockBegun(LogContents::Record const& record);
    std::uint64_t slot;
    std::uint64_t number;
    /// Position of the block's first byte in the stream of all values.
    std::uint64_t position;
};

/// A block that is in the model file.
struct BlockSaved
{
    /// \throws DamagedRecord it is none
    explicit BlockSaved(LogContents::Record const& record);
    std::uint64_t slot;
    std::uint64_t offset;
    std::uint32_t size;
    std::uint32_t contentLength;
};

/// What a log tells, in order.
struct Story
{
    /// \throws DamagedRecord a record can't be what a run writes
    explicit Story(LogContents const& log);

    /// The calls of the log that had ended.
    std::vector<CallOfRun> calls;
    RunProgress progress;

private:
    void add(LogContents::Record const& record);
    void addFilled(LogContents::Record const& record);
    void addEnd(LogContents::Record const& record);
    void addBlock(BlockBegun const& begun);
    void addSaved(BlockSaved const& saved);

    std::optional<CallOfRun> underWay_;
    /// Where the last block begins, and which of those in `progress` a slot has.
    std::uint64_t lastBegun_ = 0;
    std::unordered_map<std::uint64_t, std::size_t> blockOfSlot_;
};

/// Counts in `progress` what a call has added.
void countDataset(RunProgress& progress, CallOfRun const& call);

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
