#include "Zyl2/Mox2/Recovery/Replay.h"

#include "Zyl2/Base/File.h"
#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox/BlockNames.h"
#include "Zyl2/Mox2/Saver.h"
#include "Zyl2/Wvf/BlockEncoder.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

using Type = LogContents::Type;
constexpr std::uint64_t valueSize = 4;

Encoder encoderOf(std::string const& name)
{
    if (name == "libdeflate")
        return Encoder::Libdeflate;
    return name == "isal" ? Encoder::Isal : Encoder::Zlib;
}

} // namespace

RunProgress Replay::writeTo(std::string const& output, Story const& story)
{
    open(output);
    RunProgress progress;
    progress.damage = story.progress.damage;
    progress.blocks = story.progress.blocks;
    progress.isClosing = story.progress.isClosing;
    progress.callsUnderWay = story.progress.callsUnderWay;
    std::int64_t time = log_.start().time;
    for (CallOfRun const& call : story.calls) {
        if (!findValues(call)) {
            // Where the log is damaged, it does not tell where later calls have put them.
            if (progress.damage.empty())
                progress.damage = "the values of call " + std::to_string(progress.calls + 1) +
                                  " of " + std::to_string(story.calls.size()) + " are damaged";
            break;
        }
        repeat(call);
        countDataset(progress, call);
        time = call.time;
    }
    database_.tree->GetScratchModifierInfo().SetWriting(time, log_.start().host,
                                                        log_.start().login);
    database_.close();
    return progress;
}

void Replay::open(std::string const& output)
{
    LogContents::Start const& start = log_.start();
    SaverOptions options;
    options.overwrite = true;
    options.text1 = start.text1;
    options.text2 = start.text2;
    // Blocks that are not saved yet are then compressed by zlib: what they hold is the same.
    bool const hasEncoder = Zyl2Wvf::FindEncoder(start.encoder) != nullptr;
    options.encoder = hasEncoder ? encoderOf(start.encoder) : Encoder::Zlib;
    options.threads = 0;
    options.recoverable = 0;
    Base::File file;
    file.path = output;
    Saver(file, options).extractFrom(database_);
    Zyl2Wvf::Index& index = database_.tree->GetFile().GetIndex();
    index.SetBlockSize(start.blockSize);
    if (values_ == nullptr)
        return;
    index.SetKnownStreams(*values_);
    noteBlocks();
}

void Replay::noteBlocks()
{
    for (LogContents::Record const& record : log_.records()) {
        if (record.type == Type::BlockBegun) {
            BlockBegun const begun(record);
            values_->noteBegun(begun.slot, begun.number, begun.position);
        } else if (record.type == Type::BlockSaved) {
            BlockSaved const saved(record);
            if (!values_->noteSaved(saved.slot, saved.offset, saved.size, saved.contentLength))
                throw DamagedRecord();
        }
    }
}

/// \return whether the call's values can be had, or there are none
bool Replay::findValues(CallOfRun const& call)
{
    found_ = nullptr;
    if (!call.filled || values_ == nullptr)
        return true;
    if (!passOver(call.filled->position))
        return false;
    found_ = values_->find(call.filled->position, call.filled->length, call.filled->checksum);
    return found_ != nullptr;
}

/// Fills what calls had put that failed before they could note what.
/// \param position that the next values have
/// \return whether it was put into blocks that there are
bool Replay::passOver(std::uint64_t position)
{
    Zyl2Mox::Tree& tree = *database_.tree;
    std::uint64_t reached =
        tree.GetFile().GetIndex().GetBlockPosition(Zyl2Mox::BlockNames::HeavyData);
    if (position < reached)
        throw DamagedRecord();
    // Several of them may have failed one after the other; each had put its values into one block.
    while (reached != position) {
        std::uint64_t const gap = std::min(position, values_->nextBegun(reached)) - reached;
        if (gap % valueSize != 0)
            throw DamagedRecord();
        if (!values_->has(reached, gap))
            return false;
        std::vector<unsigned char> const nothing(gap);
        tree.WriteStreamDataset(Zyl2Mox::ShuffledValues{nothing.data(), gap / valueSize, 1});
        reached += gap;
    }
    return true;
}

void Replay::repeat(CallOfRun const& call)
{
    ByteReader from = call.call->reader();
    auto const kind = static_cast<CallKind>(from.get<std::uint8_t>());
    database_.tree->RestoreCurrentId(from.get<std::uint32_t>());
    repeat(call, kind, from);
    if (call.outcome != Outcome::Failed && database_.tree->GetNodeCount() != call.nodes)
        throw DamagedRecord();
}

void Replay::repeat(CallOfRun const& call, CallKind kind, ByteReader& from)
{
    // What a call did before it failed for want of memory is not known, and was not asked for.
    if (call.outcome == Outcome::Failed && kind != CallKind::AddArray)
        return;
    switch (kind) {
    case CallKind::AddNode: {
        NodeCall const arguments(from);
        Adder::Node command(arguments.type, arguments.name, arguments.attributes);
        return update(command, call);
    }
    case CallKind::SetNodeData: {
        NodeDataCall const arguments(from);
        Modifier::NodeData command(arguments.id, arguments.properties, arguments.attributes);
        return update(command, call);
    }
    case CallKind::AddPaths: {
        PathsCall const arguments(from);
        Adder::Components<std::vector<std::string>, ComponentArray> command(arguments.paths,
                                                                            arguments.separator);
        return update(command, call);
    }
    case CallKind::AddComponents: {
        ComponentsCall const arguments(from);
        Adder::Components<std::map<std::string, Attributes>, ComponentArray> command(
            arguments.components, arguments.separator);
        return update(command, call);
    }
    case CallKind::AddArray:
        return addArray(call, ArrayCall(from));
    }
    throw DamagedRecord();
}

void Replay::addArray(CallOfRun const& call, ArrayCall const& arguments)
{
    if (call.outcome != Outcome::Returned && !call.filled)
        return;
    if (call.outcome == Outcome::Failed && values_ == nullptr)
        return;
    if (call.outcome == Outcome::Failed) {
        // What follows stands behind these values, though nothing refers to them.
        database_.tree->WriteStreamDataset(
            Zyl2Mox::ShuffledValues{found_, call.filled->length / valueSize, 1});
        return;
    }
    RecoveredDataset const dataset(arguments.name, arguments.type, arrayOf(call, arguments),
                                   arguments.attributes);
    bool const hasValues = arguments.rows != 0 && arguments.components.size() != 0;
    bool const fits = call.filled && arguments.rows > 0 && call.filled->length % valueSize == 0 &&
                      arguments.columns == dataset.width &&
                      call.filled->length / valueSize / dataset.width ==
                          static_cast<std::uint64_t>(arguments.rows) &&
                      call.filled->length / valueSize % dataset.width == 0;
    if (hasValues ? !fits : call.filled.has_value())
        throw DamagedRecord();
    Adder::ArrayProperty<RecoveredDataset, ComponentArray, std::vector<StepData>> command;
    command.dataset = dataset;
    command.components = arguments.components;
    command.steps = arguments.steps;
    update(command, call);
}

RecoveredArray Replay::arrayOf(CallOfRun const& call, ArrayCall const& arguments) const
{
    RecoveredArray const array(found_, arguments.rows, arguments.columns, arguments.element);
    return values_ == nullptr && call.filled ? array.at(call.filled->position) : array;
}

/// \throws DamagedRecord the call does not end as it did
template <typename CommandT>
void Replay::update(CommandT& command, CallOfRun const& call)
{
    try {
        command.update(database_);
    } catch (Exception::FileWriteException const&) {
        throw;
    } catch (Exception::MemoryAllocationException const&) {
        throw;
    } catch (Exception::Exception const&) {
        if (call.outcome != Outcome::Threw)
            throw DamagedRecord();
    }
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
