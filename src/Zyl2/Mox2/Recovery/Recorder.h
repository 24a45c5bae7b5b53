#ifndef ZYL2_MOX2_RECOVERY_RECORDER_H
#define ZYL2_MOX2_RECOVERY_RECORDER_H

#include "Zyl2/Mox/Tree.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/Recovery/CallEncoding.h"
#include "Zyl2/Mox2/SaveSettings.h"
#include "Zyl2/Wvf/KeptBlocks.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// How a call ended, as it stands in the log.
enum class Outcome : std::uint32_t
{
    Returned = 0,
    /// It threw an exception that the same call would throw again.
    Threw = 1,
    /// It threw for a reason beyond the call, such as a full disk.
    Failed = 2
};

/// Notes in the log which calls change a model, and how they end.
class Recorder
{
public:
    /// Notes how the model is written.
    /// \param kept has to outlive this object
    /// \throws FileWriteException there is no room for it
    Recorder(Zyl2Wvf::KeptBlocks& kept, SaveSettings const& settings, SaverOptions const& options);

    /// Runs a command, and notes it.
    /// \throws FileWriteException it can't be noted, and was not run
    /// \throws what the command throws
    template <typename CommandT>
    void run(CommandT& command, CallKind kind, Database& database)
    {
        begin(command, kind, *database.tree);
        try {
            command.update(database);
        } catch (...) {
            end(outcomeOfCurrentException(), *database.tree);
            throw;
        }
        end(Outcome::Returned, *database.tree);
    }

    /// Notes that the model is being closed: from here on nothing can be added.
    /// \throws FileWriteException there is no room to note it, or the run is another process's
    void close();

    /// Removes log and blocks: the file is whole, and needs no recovery.
    void forget() noexcept { kept_.Remove(); }

    /// Waits until what was added is on the disk.
    /// \throws FileWriteException it is not
    void checkpoint(std::FILE* stream);

private:
    static Outcome outcomeOfCurrentException();

    template <typename CommandT>
    void begin(CommandT const& command, CallKind kind, Zyl2Mox::Tree const& tree)
    {
        assertRecording();
        ByteWriter counter;
        writeCall(counter, command, kind, tree);
        ByteWriter writer(log_.Begin(Zyl2Wvf::RecoveryLog::Type::Call, counter.size()));
        writeCall(writer, command, kind, tree);
        log_.Finish();
        noteState(tree);
    }

    template <typename CommandT>
    static void writeCall(ByteWriter& to, CommandT const& command, CallKind kind,
                          Zyl2Mox::Tree const& tree)
    {
        to.put(static_cast<std::uint8_t>(kind));
        to.put(std::uint32_t(tree.GetCurrentId()));
        write(to, command);
    }

    void assertOwnProcess() const;
    void assertRecording() const;
    void noteState(Zyl2Mox::Tree const& tree);
    // NOLINTNEXTLINE(bugprone-exception-escape): the log has room, and every tree a root
    void end(Outcome outcome, Zyl2Mox::Tree const& tree) noexcept;

    Zyl2Wvf::KeptBlocks& kept_;
    Zyl2Wvf::RecoveryLog& log_;
    /// How many nodes there were, and whether the root was filled, when the call began.
    std::size_t nodes_ = 0;
    bool hasRoot_ = false;
    bool isClosing_ = false;
    /// Why no more calls can be noted; null while they can.
    char const* obstacle_ = nullptr;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
