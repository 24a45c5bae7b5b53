#ifndef ZYL2_WVF_RECOVERYLOG_H
#define ZYL2_WVF_RECOVERYLOG_H

#include "Zyl2/Util/MappedFile.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Zyl2Wvf {

/// What happened to a model that is being written, in the order in which it happened. What was
/// appended outlives the process.
class RecoveryLog
{
public:
    static constexpr std::array<unsigned char, 8> Signature{0x89, 'W',  'V',  'L',
                                                            0x0D, 0x0A, 0x1A, 0x0A};
    static constexpr std::uint32_t Version = 1;
    static constexpr std::size_t HeaderLength = 16;
    /// Where the number of the model file stands, in the log and in that file; there it gives way
    /// to the root index.
    static constexpr std::size_t FileNumberAt = 12;
    static constexpr std::size_t FileNumberInModelAt = 20;
    static constexpr std::size_t RecordHeaderLength = 16;

    enum class Type : std::uint32_t
    {
        Start = 1,
        Call = 2,
        End = 3,
        BlockBegun = 4,
        Filled = 5,
        BlockSaved = 6,
        Closing = 7
    };

    /// Bytes of the payload of `End`, for which there is always room.
    static constexpr std::size_t EndLength = 16;

    /// \param descriptor of an empty file; this object closes it
    /// \throws FileWriteException there is no room for it
    explicit RecoveryLog(int descriptor);

    /// Notes which model file the log is of.
    /// \param number stands in the file already; not 0
    void SetFileNumber(std::uint32_t number) noexcept;

    /// Begins a record.
    /// \param length bytes of its payload
    /// \return where the caller has to put the payload before it calls `Finish`
    /// \throws FileWriteException there is no room for it; not for `End`
    unsigned char* Begin(Type type, std::size_t length);

    /// The payload is there.
    void Finish() noexcept;

    template <std::size_t length>
    void Append(Type type, std::array<unsigned char, length> const& payload);

    /// Waits until it is on the disk.
    /// \return 0, or the number of the system's error
    int Synchronise() const noexcept { return file_.Synchronise(); }

    /// The checksum of a record.
    static std::uint32_t ChecksumOf(unsigned char const* header, unsigned char const* payload,
                                    std::size_t length) noexcept;

private:
    void Reserve(std::size_t size);

    Zyl2Util::MappedFile file_;
    /// Where the next record goes.
    std::size_t position_ = 0;
    std::size_t length_ = 0;
};

/// Puts values side by side, as they stand in a payload.
template <typename... Values>
auto Packed(Values const&... values)
{
    std::array<unsigned char, (sizeof(Values) + ...)> bytes;
    unsigned char* place = bytes.data();
    auto const put = [&place](auto const& value) {
        auto const* const first = reinterpret_cast<unsigned char const*>(&value);
        for (std::size_t at = 0; at < sizeof value; ++at)
            *place++ = first[at];
    };
    (put(values), ...);
    return bytes;
}

template <std::size_t length>
void RecoveryLog::Append(Type type, std::array<unsigned char, length> const& payload)
{
    unsigned char* const place = Begin(type, length);
    for (std::size_t at = 0; at < length; ++at)
        place[at] = payload[at];
    Finish();
}

} // namespace Zyl2Wvf

#endif
