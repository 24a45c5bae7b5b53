#include "Zyl2/Mox2/Recovery/Story.h"

#include "Zyl2/Mox2/Recovery/CallEncoding.h"

#include <algorithm>
#include <string>
#include <utility>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

using Type = LogContents::Type;

} // namespace

BlockBegun::BlockBegun(LogContents::Record const& record)
{
    ByteReader from = record.reader();
    slot = from.get<std::uint64_t>();
    number = from.get<std::uint64_t>();
    position = from.get<std::uint64_t>();
    from.expectEnd();
}

BlockSaved::BlockSaved(LogContents::Record const& record)
{
    ByteReader from = record.reader();
    slot = from.get<std::uint64_t>();
    offset = from.get<std::uint64_t>();
    size = from.get<std::uint32_t>();
    contentLength = from.get<std::uint32_t>();
    from.expectEnd();
}

Story::Story(LogContents const& log)
{
    for (LogContents::Record const& record : log.records())
        add(record);
    // Blocks without content were begun for values that did not stay.
    auto& blocks = progress.blocks;
    blocks.erase(std::remove_if(blocks.begin(), blocks.end(),
                                [](RunBlock const& block) { return block.content == 0; }),
                 blocks.end());
    progress.callsUnderWay = underWay_ ? 1 : 0;
    progress.damage = log.damage();
}

void Story::add(LogContents::Record const& record)
{
    switch (record.type) {
    case Type::Call:
        if (underWay_)
            throw DamagedRecord();
        underWay_.emplace();
        underWay_->call = &record;
        break;
    case Type::Filled:
        addFilled(record);
        break;
    case Type::End:
        addEnd(record);
        break;
    case Type::Closing:
        progress.isClosing = true;
        break;
    case Type::Start:
        throw DamagedRecord();
    case Type::BlockBegun:
        addBlock(BlockBegun(record));
        break;
    case Type::BlockSaved:
        addSaved(BlockSaved(record));
        break;
    }
}

void Story::addFilled(LogContents::Record const& record)
{
    if (!underWay_ || underWay_->filled)
        throw DamagedRecord();
    ByteReader from = record.reader();
    CallOfRun::Filled filled{};
    filled.position = from.get<std::uint64_t>();
    filled.length = from.get<std::uint64_t>();
    filled.checksum = from.get<std::uint32_t>();
    from.expectEnd();
    if (progress.blocks.empty() || filled.position < lastBegun_)
        throw DamagedRecord();
    underWay_->filled = filled;
    progress.blocks.back().content = filled.position - lastBegun_ + filled.length;
}

void Story::addBlock(BlockBegun const& begun)
{
    blockOfSlot_[begun.slot] = progress.blocks.size();
    progress.blocks.emplace_back();
    progress.blocks.back().slot = begun.slot;
    lastBegun_ = begun.position;
}

void Story::addSaved(BlockSaved const& saved)
{
    auto const found = blockOfSlot_.find(saved.slot);
    if (found == blockOfSlot_.end())
        throw DamagedRecord();
    RunBlock& block = progress.blocks[found->second];
    block.position = saved.offset;
    block.size = saved.size;
    block.content = saved.contentLength;
}

void Story::addEnd(LogContents::Record const& record)
{
    if (!underWay_)
        throw DamagedRecord();
    ByteReader from = record.reader();
    auto const outcome = from.get<std::uint32_t>();
    if (outcome > static_cast<std::uint32_t>(Outcome::Failed))
        throw DamagedRecord();
    underWay_->outcome = static_cast<Outcome>(outcome);
    underWay_->nodes = from.get<std::uint32_t>();
    underWay_->time = from.get<std::int64_t>();
    from.expectEnd();
    calls.push_back(*underWay_);
    countDataset(progress, *underWay_);
    underWay_.reset();
}

void countDataset(RunProgress& progress, CallOfRun const& call)
{
    ++progress.calls;
    if (!call.filled || call.outcome != Outcome::Returned)
        return;
    ++progress.datasets;
    ByteReader from = call.call->reader();
    from.get<std::uint8_t>();
    from.get<std::uint32_t>();
    ArrayCall const arguments(from);
    if (arguments.steps.empty() || arguments.steps.back().name.empty())
        return;
    std::string const& step = arguments.steps.back().name;
    if (step != progress.lastStep) {
        progress.stepBefore = std::exchange(progress.lastStep, step);
        progress.datasetsOfLastStep = 0;
    }
    ++progress.datasetsOfLastStep;
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
