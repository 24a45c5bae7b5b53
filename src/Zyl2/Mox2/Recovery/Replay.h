#ifndef ZYL2_MOX2_RECOVERY_REPLAY_H
#define ZYL2_MOX2_RECOVERY_REPLAY_H

#include <Zyl2/Mox2/InterruptedRun.h>

#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/Recovery/CallEncoding.h"
#include "Zyl2/Mox2/Recovery/KeptValues.h"
#include "Zyl2/Mox2/Recovery/LogContents.h"
#include "Zyl2/Mox2/Recovery/Story.h"

#include <cstdint>
#include <string>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// Makes the calls of a run again.
class Replay
{
public:
    /// \param values null for a file without them, in which datasets have the positions that they
    ///        have in the run's
    Replay(LogContents const& log, KeptValues* values, Database& database)
        : log_(log), values_(values), database_(database)
    {}

    /// Makes them and closes the file.
    /// \param output is overwritten
    RunProgress writeTo(std::string const& output, Story const& story);

private:
    void open(std::string const& output);
    void noteBlocks();
    bool findValues(CallOfRun const& call);
    bool passOver(std::uint64_t position);
    void repeat(CallOfRun const& call);
    void repeat(CallOfRun const& call, CallKind kind, ByteReader& from);
    void addArray(CallOfRun const& call, ArrayCall const& arguments);
    RecoveredArray arrayOf(CallOfRun const& call, ArrayCall const& arguments) const;
    template <typename CommandT>
    void update(CommandT& command, CallOfRun const& call);

    LogContents const& log_;
    KeptValues* values_;
    Database& database_;
    /// Of the call that is to be made.
    unsigned char const* found_ = nullptr;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
