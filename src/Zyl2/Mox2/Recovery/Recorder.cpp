#include "Zyl2/Mox2/Recovery/Recorder.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox/ModifierInfo.h"
#include "Zyl2/Wvf/BlockSizeLimiter.h"

#include <ctime>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

namespace Sites = Exception::Sites::Recovery;
using Type = Zyl2Wvf::RecoveryLog::Type;
constexpr unsigned int rootId = 1;

bool hasRoot(Zyl2Mox::Tree const& tree)
{
    return tree.GetReqNode(rootId).value != nullptr;
}

std::int64_t now()
{
    return static_cast<std::int64_t>(std::time(nullptr));
}

/// What was asked for, or what the environment says at this moment.
std::uint32_t blockSizeOf(SaveSettings const& settings)
{
    if (settings.blockSize)
        return *settings.blockSize;
    return Zyl2Wvf::BlockSizeLimiter().limit;
}

} // namespace

Recorder::Recorder(Zyl2Wvf::KeptBlocks& kept, SaveSettings const& settings,
                   SaverOptions const& options)
    : kept_(kept), log_(kept.GetLog())
{
    std::string const host = Zyl2Mox::ModifierInfo::OwnHostName();
    std::string const login = Zyl2Mox::ModifierInfo::OwnLoginName();
    auto const writeStart = [&](ByteWriter& to) {
        to.put(std::string(settings.encoder.name));
        to.put(blockSizeOf(settings));
        to.put(options.text1);
        to.put(options.text2);
        to.put(host);
        to.put(login);
        to.put(now());
    };
    ByteWriter counter;
    writeStart(counter);
    ByteWriter writer(log_.Begin(Type::Start, counter.size()));
    writeStart(writer);
    log_.Finish();
    kept_.NoteBegun();
}

void Recorder::close()
{
    assertOwnProcess();
    if (!isClosing_)
        kept_.NoteClosing();
    isClosing_ = true;
    obstacle_ = "the model was closed";
}

void Recorder::checkpoint(std::FILE* stream)
{
    assertRecording();
    kept_.Synchronise(stream);
}

Outcome Recorder::outcomeOfCurrentException()
{
    try {
        throw;
    } catch (Exception::FileWriteException const&) {
        return Outcome::Failed;
    } catch (Exception::MemoryAllocationException const&) {
        return Outcome::Failed;
    } catch (Exception::Exception const&) {
        return Outcome::Threw;
    } catch (...) {
        return Outcome::Failed;
    }
}

void Recorder::assertOwnProcess() const
{
    if (!kept_.IsOwnProcess())
        Exception::raise(Sites::NotRecorded,
                         "the file belongs to the process that this one was forked from");
}

void Recorder::assertRecording() const
{
    assertOwnProcess();
    if (obstacle_ != nullptr)
        Exception::raise(Sites::NotRecorded, obstacle_);
}

void Recorder::noteState(Zyl2Mox::Tree const& tree)
{
    nodes_ = tree.GetNodeCount();
    hasRoot_ = hasRoot(tree);
}

/// Can't fail: room for this record was reserved when the call began.
// NOLINTNEXTLINE(bugprone-exception-escape): the log has room, and every tree a root
void Recorder::end(Outcome outcome, Zyl2Mox::Tree const& tree) noexcept
{
    auto const nodes = static_cast<std::uint32_t>(tree.GetNodeCount());
    log_.Append(Type::End, Zyl2Wvf::Packed(outcome, nodes, now()));
    // How far it got before it failed, no other call can repeat: nothing may follow that builds on
    // its nodes.
    if (outcome == Outcome::Failed && (tree.GetNodeCount() != nodes_ || hasRoot(tree) != hasRoot_))
        obstacle_ = "an earlier call failed when it had added some of its nodes; what came before "
                    "can be recovered";
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
