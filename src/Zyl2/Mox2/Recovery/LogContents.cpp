#include "Zyl2/Mox2/Recovery/LogContents.h"

#include "Zyl2/Exception/Raise.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

using Zyl2Wvf::RecoveryLog;
namespace Sites = Exception::Sites::Recovery;

constexpr std::size_t typeAt = 8;
constexpr std::size_t checksumAt = 12;

template <typename T>
T valueAt(unsigned char const* place)
{
    T value{};
    std::memcpy(&value, place, sizeof value);
    return value;
}

bool isKnown(std::uint32_t type)
{
    return type >= static_cast<std::uint32_t>(RecoveryLog::Type::Start) &&
           type <= static_cast<std::uint32_t>(RecoveryLog::Type::Closing);
}

} // namespace

LogContents::LogContents(std::vector<unsigned char> bytes) : bytes_(std::move(bytes))
{
    // A run that died before it had written the header left nothing.
    if (isZeroFrom(0))
        return;
    if (bytes_.size() < RecoveryLog::HeaderLength ||
        !std::equal(RecoveryLog::Signature.begin(), RecoveryLog::Signature.end(), bytes_.begin()))
        Exception::raise(Sites::NotRecovered, "the recovery log is not one");
    auto const version = valueAt<std::uint32_t>(bytes_.data() + RecoveryLog::Signature.size());
    if (version != 0 && version != RecoveryLog::Version)
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence("the recovery log has version ", version,
                                             ", and this library reads version ",
                                             RecoveryLog::Version));
    fileNumber_ = valueAt<std::uint32_t>(bytes_.data() + RecoveryLog::FileNumberAt);
    end_ = RecoveryLog::HeaderLength;
    while (takeRecord()) {
    }
    takeStart();
}

/// \return whether there was one that others may follow
bool LogContents::takeRecord()
{
    std::size_t const left = bytes_.size() - end_;
    unsigned char const* const header = bytes_.data() + end_;
    // Behind the last record there is always room for the head of another.
    if (left < RecoveryLog::RecordHeaderLength) {
        damage_ = "the recovery log is cut off at byte " + std::to_string(bytes_.size());
        return false;
    }
    if (valueAt<std::uint64_t>(header + typeAt) == 0) {
        // A process that dies while it begins a record may leave its length.
        if (!isZeroFrom(end_ + typeAt))
            damage_ = "the recovery log is damaged at byte " + std::to_string(end_);
        return false;
    }
    auto const length = valueAt<std::uint64_t>(header);
    auto const type = valueAt<std::uint32_t>(header + typeAt);
    auto const checksum = valueAt<std::uint32_t>(header + checksumAt);
    unsigned char const* const payload = header + RecoveryLog::RecordHeaderLength;
    bool const fits = length <= left - RecoveryLog::RecordHeaderLength;
    if (fits && isKnown(type) && checksum == RecoveryLog::ChecksumOf(header, payload, length)) {
        records_.push_back({static_cast<Type>(type), payload, static_cast<std::size_t>(length)});
        end_ += RecoveryLog::RecordHeaderLength + static_cast<std::size_t>(length);
        // A recovery notes that it is done where a torn record may have been.
        return records_.back().type != Type::Closing;
    }
    // The checksum comes last.
    bool const isTorn =
        fits && checksum == 0 &&
        isZeroFrom(end_ + RecoveryLog::RecordHeaderLength + static_cast<std::size_t>(length));
    if (!isTorn)
        damage_ = "the recovery log is damaged at byte " + std::to_string(end_);
    return false;
}

bool LogContents::isZeroFrom(std::size_t position) const
{
    auto const first = bytes_.begin() + static_cast<std::ptrdiff_t>(position);
    return std::all_of(first, bytes_.end(), [](unsigned char byte) { return byte == 0; });
}

void LogContents::takeStart()
{
    if (records_.empty())
        return;
    try {
        if (records_.front().type != Type::Start)
            throw DamagedRecord();
        ByteReader from = records_.front().reader();
        start_.encoder = from.get<std::string>();
        start_.blockSize = from.get<std::uint32_t>();
        start_.text1 = from.get<std::string>();
        start_.text2 = from.get<std::string>();
        start_.host = from.get<std::string>();
        start_.login = from.get<std::string>();
        start_.time = from.get<std::int64_t>();
        from.expectEnd();
    } catch (DamagedRecord const&) {
        Exception::raise(Sites::NotRecovered, "the recovery log does not begin as one");
    }
    hasStart_ = true;
    records_.erase(records_.begin());
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
