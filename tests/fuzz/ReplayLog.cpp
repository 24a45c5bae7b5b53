// The log: 16 bytes, records. A record: 8 length of the payload, 4 type, 4 CRC-32 of these 12 bytes
// and the payload, payload. That of "filled" (5): 8 position, 8 length, 4 CRC-32 of the values.

#include "Inputs.h"

#include "Violation.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"
#include "moxread/Verify.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/InterruptedRun.h>

#include <zlib.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace Fuzz {

namespace {

using Zyl2::Mox2::InterruptedRun;
using Zyl2::Mox2::RunProgress;

constexpr std::size_t headerLength = 16;
constexpr std::size_t recordHeaderLength = 16;
constexpr std::size_t typeAt = 8;
constexpr std::size_t checksumAt = 12;
constexpr std::uint32_t filled = 5;
constexpr std::size_t filledLength = 20;
constexpr std::size_t blockLength = 65536;

template <typename T>
T valueAt(std::string const& bytes, std::size_t at)
{
    T value{};
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

std::uint32_t checksumOf(std::string const& bytes, std::size_t at, std::size_t count,
                         uLong before = 0)
{
    auto const* const first = reinterpret_cast<Bytef const*>(bytes.data()) + at;
    return static_cast<std::uint32_t>(::crc32_z(before, first, count));
}

void put(std::string& bytes, std::size_t at, std::uint32_t value)
{
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

/// The same records with the checksums that a run would have given them and values that are all
/// zero: else no input got beyond these.
std::string withChecksums(std::string log)
{
    std::string const zeros(blockLength, '\0');
    for (std::size_t at = headerLength; at + recordHeaderLength <= log.size();) {
        auto const length = valueAt<std::uint64_t>(log, at);
        auto const type = valueAt<std::uint32_t>(log, at + typeAt);
        std::size_t const payload = at + recordHeaderLength;
        if (type == 0 || length > log.size() - payload)
            break;
        if (type == filled && length == filledLength) {
            auto const values = valueAt<std::uint64_t>(log, payload + sizeof(std::uint64_t));
            if (values <= zeros.size())
                put(log, payload + 2 * sizeof(std::uint64_t), checksumOf(zeros, 0, values));
        }
        put(log, at + checksumAt,
            checksumOf(log, payload, length, checksumOf(log, at, checksumAt)));
        at = payload + length;
    }
    // Behind the last record there is room for the head of another.
    return log + std::string(recordHeaderLength, '\0');
}

template <typename Action>
bool succeeds(Action const& action)
{
    try {
        action();
        return true;
    } catch (Zyl2::Exception::Exception const& failure) {
        require(!std::string(Zyl2::Exception::detail(failure)).empty(), "no reason is given");
        return false;
    }
}

/// What a run leaves beside the file that it writes.
class LeftRun
{
public:
    LeftRun()
    {
        std::filesystem::create_directory(path() + ".recovery");
        for (char const* block : {"1", "2"})
            Support::WriteFile(path() + ".recovery/block-" + block, std::string(blockLength, '\0'));
    }

    std::string path() const { return folder_.File("model.mox"); }
    std::string output() const { return folder_.File("recovered.mox"); }
    void putLog(std::string const& log) const { Support::WriteFile(path() + ".recovery/log", log); }

private:
    Support::TemporaryFolder folder_;
};

} // namespace

void replayLog(std::uint8_t const* bytes, std::size_t size)
{
    static LeftRun const run;
    std::string const log(reinterpret_cast<char const*>(bytes), size);
    run.putLog(size < headerLength ? log : withChecksums(log));
    bool const isOutlined =
        succeeds([&] { InterruptedRun::writeOutlineOf(run.path(), run.output()); });
    if (isOutlined) {
        MoxRead::ReadOptions options;
        options.isOutline = true;
        MoxRead::Model const outline(run.output(), options);
    }
    RunProgress progress;
    if (!succeeds([&] { progress = InterruptedRun(run.path()).writeTo(run.output()); }))
        return;
    MoxRead::verify(run.output());
    require(isOutlined || !progress.damage.empty(), "what is recovered can't be listed");
}

} // namespace Fuzz
