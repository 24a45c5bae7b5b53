#include "Zyl2/Mox2/Recovery/Replay.h"

#include "Zyl2/Base/File.h"
#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox/BlockNames.h"
#include "Zyl2/Mox2/Saver.h"
#include "Zyl2/Wvf/BlockEncoder.h"

#include <exception>
#include <utility>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

namespace Sites = Exception::Sites::Recovery;
using Type = LogContents::Type;
constexpr std::uint64_t valueSize = 4;

Encoder encoderOf(std::string const& name)
{
    if (name == "libdeflate")
        return Encoder::Libdeflate;
    return name == "isal" ? Encoder::Isal : Encoder::Zlib;
}

} // namespace

Story::Story(LogContents const& log)
{
    for (LogContents::Record const& record : log.records())
        add(record);
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
    case Type::Filled: {
        if (!underWay_ || underWay_->filled)
            throw DamagedRecord();
        ByteReader from = record.reader();
        CallOfRun::Filled filled{};
        filled.position = from.get<std::uint64_t>();
        filled.length = from.get<std::uint64_t>();
        filled.checksum = from.get<std::uint32_t>();
        from.expectEnd();
        underWay_->filled = filled;
        break;
    }
    case Type::End:
        addEnd(record);
        break;
    case Type::Closing:
        progress.isClosing = true;
        break;
    case Type::Start:
        throw DamagedRecord();
    case Type::BlockBegun:
    case Type::BlockSaved:
        break;
    }
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

RunProgress Replay::writeTo(std::string const& output, Story const& story)
{
    open(output);
    noteBlocks();
    RunProgress progress;
    progress.damage = story.progress.damage;
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
    index.SetKnownStreams(values_);
}

void Replay::noteBlocks()
{
    for (LogContents::Record const& record : log_.records()) {
        ByteReader from = record.reader();
        if (record.type == Type::BlockBegun) {
            auto const slot = from.get<std::uint64_t>();
            auto const number = from.get<std::uint64_t>();
            values_.noteBegun(slot, number, from.get<std::uint64_t>());
            from.expectEnd();
        } else if (record.type == Type::BlockSaved) {
            auto const slot = from.get<std::uint64_t>();
            auto const offset = from.get<std::uint64_t>();
            auto const size = from.get<std::uint32_t>();
            if (!values_.noteSaved(slot, offset, size, from.get<std::uint32_t>()))
                throw DamagedRecord();
            from.expectEnd();
        }
    }
}

/// \return whether the call's values can be had, or there are none
bool Replay::findValues(CallOfRun const& call)
{
    found_ = nullptr;
    if (!call.filled)
        return true;
    passOver(call.filled->position);
    found_ = values_.find(call.filled->position, call.filled->length, call.filled->checksum);
    return found_ != nullptr;
}

/// Fills what a call had put that failed before it could note what.
/// \param position that the next values have
void Replay::passOver(std::uint64_t position)
{
    Zyl2Mox::Tree& tree = *database_.tree;
    std::uint64_t const reached =
        tree.GetFile().GetIndex().GetBlockPosition(Zyl2Mox::BlockNames::HeavyData);
    if (position == reached)
        return;
    std::uint64_t const gap = position - reached;
    if (position < reached || gap % valueSize != 0 || !values_.has(reached, gap))
        throw DamagedRecord();
    std::vector<unsigned char> const nothing(gap);
    tree.WriteStreamDataset(Zyl2Mox::ShuffledValues{nothing.data(), gap / valueSize, 1});
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
    if (kind == CallKind::AddArray)
        return addArray(call, ArrayCall(from));
    // What a call did before it failed for want of memory is not known, and was not asked for.
    if (call.outcome == Outcome::Failed)
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
        break;
    }
    throw DamagedRecord();
}

void Replay::addArray(CallOfRun const& call, ArrayCall const& arguments)
{
    if (call.outcome != Outcome::Returned && !call.filled)
        return;
    if (call.outcome == Outcome::Failed) {
        // What follows stands behind these values, though nothing refers to them.
        database_.tree->WriteStreamDataset(
            Zyl2Mox::ShuffledValues{found_, call.filled->length / valueSize, 1});
        return;
    }
    RecoveredDataset const dataset(
        arguments.name, arguments.type,
        RecoveredArray(found_, arguments.rows, arguments.columns, arguments.element),
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
