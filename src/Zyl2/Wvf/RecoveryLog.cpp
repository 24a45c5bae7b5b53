// The file:
//
//      0   signature, 8: 0x89 "WVL" 0x0D 0x0A 0x1A 0x0A
//      8   version, 4: 1
//     12   number of the model file, 4; 0 while it is not known
//     16   records, then zeros
//
// A record:
//
//      0   length of the payload, 8
//      8   type, 4
//     12   CRC-32 of these 12 bytes and the payload, 4
//     16   payload

#include "Zyl2/Wvf/RecoveryLog.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/Checksum.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace Zyl2Wvf {

namespace {

namespace Sites = Zyl2::Exception::Sites::Recovery;

constexpr std::size_t TypeAt = 8;
constexpr std::size_t ChecksumAt = 12;
constexpr std::size_t EndRecordLength = RecoveryLog::RecordHeaderLength + RecoveryLog::EndLength;
/// What a call notes of its values and of the block that they go to.
constexpr std::size_t RoomForCall = 256;
constexpr std::size_t SmallestStep = 4096;
constexpr std::size_t LargestStep = 1048576;

} // namespace

RecoveryLog::RecoveryLog(int descriptor) : file_(descriptor)
{
    Reserve(HeaderLength);
    std::memcpy(file_.GetData(), Signature.data(), Signature.size());
    std::memcpy(file_.GetData() + Signature.size(), &Version, sizeof Version);
    position_ = HeaderLength;
}

void RecoveryLog::SetFileNumber(std::uint32_t number) noexcept
{
    std::memcpy(file_.GetData() + FileNumberAt, &number, sizeof number);
}

unsigned char* RecoveryLog::Begin(Type type, std::size_t length)
{
    if (type != Type::End)
        Reserve(RecordHeaderLength + length + (type == Type::Call ? RoomForCall : 0));
    unsigned char* const header = file_.GetData() + position_;
    auto const number = static_cast<std::uint32_t>(type);
    length_ = length;
    std::memcpy(header + TypeAt, &number, sizeof number);
    auto const wide = static_cast<std::uint64_t>(length);
    std::memcpy(header, &wide, sizeof wide);
    // A process that dies from here on leaves a torn record, and no payload without a length.
    std::atomic_signal_fence(std::memory_order_seq_cst);
    return header + RecordHeaderLength;
}

void RecoveryLog::Finish() noexcept
{
    unsigned char* const header = file_.GetData() + position_;
    std::uint32_t const checksum = ChecksumOf(header, header + RecordHeaderLength, length_);
    std::atomic_signal_fence(std::memory_order_seq_cst);
    std::memcpy(header + ChecksumAt, &checksum, sizeof checksum);
    position_ += RecordHeaderLength + length_;
}

std::uint32_t RecoveryLog::ChecksumOf(unsigned char const* header, unsigned char const* payload,
                                      std::size_t length) noexcept
{
    return Checksum(Checksum(0, header, ChecksumAt), payload, length);
}

/// Sees to it that so many bytes, the end of a call, and the zeros behind the last record fit.
void RecoveryLog::Reserve(std::size_t size)
{
    std::size_t const needed = position_ + size + EndRecordLength + RecordHeaderLength;
    if (needed <= file_.GetSize())
        return;
    std::size_t const step = std::clamp(file_.GetSize() / 4, SmallestStep, LargestStep);
    int const error = file_.Grow((needed + step - 1) / step * step);
    if (error != 0)
        Zyl2::Exception::raise(
            Sites::NoRoomForLog,
            Zyl2::Exception::sentence("no room for the recovery log: ", std::strerror(error)));
}

} // namespace Zyl2Wvf
