#ifndef ZYL2_MOX2_RECOVERY_REPLAY_H
#define ZYL2_MOX2_RECOVERY_REPLAY_H

#include <Zyl2/Mox2/InterruptedRun.h>

#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/Recovery/CallEncoding.h"
#include "Zyl2/Mox2/Recovery/KeptValues.h"
#include "Zyl2/Mox2/Recovery/LogContents.h"
#include "Zyl2/Mox2/Recovery/Recorder.h"

#include <cstdint>
#include <optional>
#include <string>
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

/// What a log tells, in order.
struct Story
{
    /// \throws DamagedRecord a record can't be what a run writes
    explicit Story(LogContents const& log);

    /// Those that had ended.
    std::vector<CallOfRun> calls;
    RunProgress progress;

private:
    void add(LogContents::Record const& record);
    void addEnd(LogContents::Record const& record);

    std::optional<CallOfRun> underWay_;
};

/// Counts in `progress` what a call has added.
void countDataset(RunProgress& progress, CallOfRun const& call);

/// Makes the calls of a run again.
class Replay
{
public:
    Replay(LogContents const& log, KeptValues& values, Database& database)
        : log_(log), values_(values), database_(database)
    {}

    /// Makes them and closes the file.
    /// \param output is overwritten
    RunProgress writeTo(std::string const& output, Story const& story);

private:
    void open(std::string const& output);
    void noteBlocks();
    bool findValues(CallOfRun const& call);
    void passOver(std::uint64_t position);
    void repeat(CallOfRun const& call);
    void repeat(CallOfRun const& call, CallKind kind, ByteReader& from);
    void addArray(CallOfRun const& call, ArrayCall const& arguments);
    template <typename CommandT>
    void update(CommandT& command, CallOfRun const& call);

    LogContents const& log_;
    KeptValues& values_;
    Database& database_;
    /// Of the call that is to be made.
    unsigned char const* found_ = nullptr;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
