#include <Zyl2/Mox2/InterruptedRun.h>

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox2/Recovery/KeptValues.h"
#include "Zyl2/Mox2/Recovery/LogContents.h"
#include "Zyl2/Mox2/Recovery/Replay.h"
#include "Zyl2/Util/Files.h"
#include "Zyl2/Wvf/RecoveryFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

namespace {

namespace Sites = Exception::Sites::Recovery;
using Recovery::DamagedRecord;
using Recovery::LogContents;
using Recovery::Story;
using Zyl2Wvf::RecoveryFolder;
using Zyl2Wvf::RecoveryLog;

/// The log's descriptor, and the lock that goes with it.
class LogFile
{
public:
    LogFile(RecoveryFolder const& folder, int flags)
        : descriptor_(folder.OpenFile(RecoveryFolder::LogName, flags))
    {
        if (descriptor_ < 0)
            refuse("the recovery log can't be read");
    }
    ~LogFile() { ::close(descriptor_); }
    LogFile(LogFile const&) = delete;
    LogFile& operator=(LogFile const&) = delete;

    void lock() const
    {
        int const writer = RecoveryFolder::Lock(descriptor_);
        if (writer > 0)
            Exception::raise(
                Sites::NotRecovered,
                Exception::sentence("the file is still being written by process ", writer));
    }

    bool isLocked() const { return RecoveryFolder::HolderOfLock(descriptor_) > 0; }

    std::vector<unsigned char> read() const
    {
        struct stat status
        {};
        if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))
            refuse("the recovery log can't be read");
        std::vector<unsigned char> bytes(static_cast<std::size_t>(status.st_size));
        std::size_t at = 0;
        while (at < bytes.size()) {
            ssize_t const got =
                ::pread(descriptor_, bytes.data() + at, bytes.size() - at, static_cast<off_t>(at));
            if (got < 0 && errno != EINTR)
                refuse("the recovery log can't be read");
            if (got == 0)
                bytes.resize(at);
            at += got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        return bytes;
    }

    /// Makes a record the last one.
    void close(std::size_t end) const
    {
        std::array<unsigned char, RecoveryLog::RecordHeaderLength> record{};
        auto const type = static_cast<std::uint32_t>(RecoveryLog::Type::Closing);
        std::memcpy(record.data() + sizeof(std::uint64_t), &type, sizeof type);
        std::uint32_t const checksum = RecoveryLog::ChecksumOf(record.data(), record.data(), 0);
        std::memcpy(record.data() + record.size() - sizeof checksum, &checksum, sizeof checksum);
        if (::ftruncate(descriptor_, static_cast<off_t>(end)) != 0 ||
            ::pwrite(descriptor_, record.data(), record.size(), static_cast<off_t>(end)) !=
                static_cast<ssize_t>(record.size()) ||
            ::fdatasync(descriptor_) != 0)
            Exception::raise(Sites::NotKept,
                             Exception::sentence("the recovery log: ", std::strerror(errno)));
    }

private:
    [[noreturn]] static void refuse(char const* what)
    {
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence(what, ": ", std::strerror(errno)));
    }

    int descriptor_;
};

/// \throws MiscelleneousException a record is whole, and yet can't be what a run writes
Story storyOf(LogContents const& log)
{
    try {
        return Story(log);
    } catch (DamagedRecord const& error) {
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence("the recovery log is damaged: ", error.what()));
    }
}

/// What is closed is of no use, and its failure is not what has to be told.
void closeQuietly(Database& database) noexcept
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            database.close();
        } catch (...) {
        }
    }
}

} // namespace

struct InterruptedRun::Content
{
    explicit Content(std::string const& path)
        : modelFile(path), folder(RecoveryFolder::Open(path)), file(folder, O_RDWR),
          log((file.lock(), file.read())), story(storyOf(log))
    {}

    std::string modelFile;
    RecoveryFolder folder;
    LogFile file;
    LogContents log;
    Story story;
};

bool InterruptedRun::isBeside(std::string const& path)
{
    return RecoveryFolder::IsBeside(path);
}

void InterruptedRun::removeRemains(std::string const& path)
{
    if (!isBeside(path) && Zyl2Util::FileExists(RecoveryFolder::PathFor(path).c_str()))
        RecoveryFolder::Open(path).Remove();
}

RunProgress InterruptedRun::progressOf(std::string const& path)
{
    RecoveryFolder const folder = RecoveryFolder::Open(path);
    LogFile const file(folder, O_RDONLY);
    LogContents const log(file.read());
    RunProgress progress = storyOf(log).progress;
    progress.isGoingOn = file.isLocked();
    return progress;
}

InterruptedRun::InterruptedRun(std::string const& path) : content_(new Content(path)) {}

InterruptedRun::~InterruptedRun()
{
    delete content_;
}

RunProgress const& InterruptedRun::progress() const
{
    return content_->story.progress;
}

std::string InterruptedRun::temporaryPath() const
{
    return content_->folder.GetPath() + '/' + RecoveryFolder::ResultName;
}

RunProgress InterruptedRun::writeTo(std::string const& output)
{
    if (!content_->log.hasStart())
        Exception::raise(Sites::NotRecovered, "the run ended before it had begun to write");
    Recovery::KeptValues values(content_->folder, content_->modelFile);
    Database database;
    try {
        return Recovery::Replay(content_->log, values, database).writeTo(output, content_->story);
    } catch (DamagedRecord const& error) {
        closeQuietly(database);
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence("the recovery log is damaged: ", error.what()));
    } catch (...) {
        closeQuietly(database);
        throw;
    }
}

void InterruptedRun::noteWhole()
{
    if (!content_->story.progress.isClosing)
        content_->file.close(content_->log.end());
}

void InterruptedRun::remove()
{
    content_->folder.Remove();
}

} // namespace Mox2
} // namespace Zyl2
