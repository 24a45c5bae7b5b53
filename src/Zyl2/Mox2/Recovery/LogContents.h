#ifndef ZYL2_MOX2_RECOVERY_LOGCONTENTS_H
#define ZYL2_MOX2_RECOVERY_LOGCONTENTS_H

#include "Zyl2/Mox2/Recovery/ByteReader.h"
#include "Zyl2/Wvf/RecoveryLog.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

/// The records of a recovery log, as far as they are whole.
class LogContents
{
public:
    using Type = Zyl2Wvf::RecoveryLog::Type;

    struct Record
    {
        Type type;
        unsigned char const* payload;
        std::size_t length;

        ByteReader reader() const { return {payload, length}; }
    };

    /// How the run writes its file.
    struct Start
    {
        std::string encoder;
        std::uint32_t blockSize = 0;
        std::string text1;
        std::string text2;
        std::string host;
        std::string login;
        std::int64_t time = 0;
    };

    /// \param bytes of the log
    /// \throws MiscelleneousException "Unable to recover": it is no log, or of another version
    explicit LogContents(std::vector<unsigned char> bytes);

    /// Number of the model file that the log belongs to; 0 where it is not known.
    std::uint32_t fileNumber() const { return fileNumber_; }
    /// Whether the run got as far as its first record.
    bool hasStart() const { return hasStart_; }
    Start const& start() const { return start_; }
    /// The records behind the first one, which is the start.
    std::vector<Record> const& records() const { return records_; }
    /// Where the next record would go.
    std::size_t end() const { return end_; }
    /// What is wrong with the rest; empty when nothing is.
    std::string const& damage() const { return damage_; }

private:
    bool takeRecord();
    bool isZeroFrom(std::size_t position) const;
    void takeStart();

    std::vector<unsigned char> bytes_;
    std::vector<Record> records_;
    Start start_;
    std::uint32_t fileNumber_ = 0;
    bool hasStart_ = false;
    std::size_t end_ = 0;
    std::string damage_;
};

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2

#endif
