#include <Zyl2/Mox2/InterruptedRun.h>

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox2/Recovery/KeptValues.h"
#include "Zyl2/Mox2/Recovery/LogContents.h"
#include "Zyl2/Mox2/Recovery/Replay.h"
#include "Zyl2/Util/Files.h"
#include "Zyl2/Wvf/LogLock.h"
#include "Zyl2/Wvf/RecoveryFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

namespace {

namespace Sites = Exception::Sites::Recovery;
using Recovery::DamagedRecord;
using Recovery::LogContents;
using Recovery::Story;
using Zyl2Wvf::LogHolder;
using Zyl2Wvf::LogLock;
using Zyl2Wvf::RecoveryFolder;
using Zyl2Wvf::RecoveryLog;

/// The log's descriptor, and the lock that goes with it.
class LogFile
{
public:
    enum class Use
    {
        Look,
        Recover
    };

    LogFile(RecoveryFolder const& folder, Use use)
        : descriptor_(opened(folder, use == Use::Look ? O_RDONLY : O_RDWR))
    {
        auto const holder = use == Use::Look ? LogLock::HolderOf(descriptor_) : lock();
        isHeld_ = holder.has_value();
        if (use == Use::Look || !isHeld_)
            return;
        ::close(descriptor_);
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence("the file is still being written", holder->GetText()));
    }
    ~LogFile() { ::close(descriptor_); }
    LogFile(LogFile const&) = delete;
    LogFile& operator=(LogFile const&) = delete;

    /// Whether somebody else had the lock when this object was made.
    bool isHeld() const { return isHeld_; }

    std::vector<unsigned char> read() const
    {
        struct stat status
        {};
        demandRead(::fstat(descriptor_, &status) == 0);
        if (!S_ISREG(status.st_mode))
            Exception::raise(Sites::NotRecovered, "the recovery log is not a file");
        std::vector<unsigned char> bytes(static_cast<std::size_t>(status.st_size));
        std::size_t at = 0;
        // Nothing comes where the file was cut off meanwhile.
        for (ssize_t got = 1; got != 0 && at < bytes.size();) {
            got =
                ::pread(descriptor_, bytes.data() + at, bytes.size() - at, static_cast<off_t>(at));
            demandRead(got >= 0 || errno == EINTR);
            at += got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        bytes.resize(at);
        return bytes;
    }

    /// Notes at `end` that the run is closed: what stands behind it does not count.
    void close(std::size_t end) const
    {
        std::array<unsigned char, RecoveryLog::RecordHeaderLength> record{};
        auto const type = static_cast<std::uint32_t>(RecoveryLog::Type::Closing);
        std::memcpy(record.data() + sizeof(std::uint64_t), &type, sizeof type);
        std::uint32_t const checksum = RecoveryLog::ChecksumOf(record.data(), record.data(), 0);
        std::memcpy(record.data() + record.size() - sizeof checksum, &checksum, sizeof checksum);
        if (::pwrite(descriptor_, record.data(), record.size(), static_cast<off_t>(end)) !=
                static_cast<ssize_t>(record.size()) ||
            ::fdatasync(descriptor_) != 0)
            Exception::raise(Sites::NotKept,
                             Exception::sentence("the recovery log: ", std::strerror(errno)));
    }

private:
    static int opened(RecoveryFolder const& folder, int flags)
    {
        int descriptor = folder.OpenFile(RecoveryFolder::LogName, flags);
        // What somebody else has left, or what lies on a medium that can't be written, can be
        // recovered to another place.
        if (descriptor < 0 && (errno == EACCES || errno == EROFS))
            descriptor = folder.OpenFile(RecoveryFolder::LogName, O_RDONLY);
        demandRead(descriptor >= 0);
        return descriptor;
    }

    std::optional<LogHolder> lock() const
    {
        std::optional<LogHolder> const holder = LogLock::Take(descriptor_);
        // Where nothing may be written, nothing can be taken either.
        return holder ? holder : LogLock::HolderOf(descriptor_);
    }

    static void demandRead(bool isDone)
    {
        if (!isDone)
            Exception::raise(
                Sites::NotRecovered,
                Exception::sentence("the recovery log can't be read: ", std::strerror(errno)));
    }

    int descriptor_;
    bool isHeld_ = false;
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

/// Number of its run, and whether its index was begun, as they stand in a model file.
struct FileMark
{
    std::uint32_t number = 0;
    bool hasIndex = false;
};

/// \return none where there is no file, or it can't be read
std::optional<FileMark> markOf(std::string const& modelFile)
{
    int const file = ::open(modelFile.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return std::nullopt;
    // Length and count of the index come before the number.
    std::array<std::uint32_t, 3> words{};
    static_cast<void>(::pread(file, words.data(), sizeof words,
                              RecoveryLog::FileNumberInModelAt - 2 * sizeof words[0]));
    ::close(file);
    return FileMark{words[2], words[0] != 0 || words[1] != 0};
}

/// Whether the model file with that mark was made by a run that was not recoverable, and left the
/// log alone.
bool isOfAnother(std::optional<FileMark> const& mark, LogContents const& log, Story const& story)
{
    if (!mark || log.fileNumber() == 0)
        return false;
    return mark->hasIndex ? !story.progress.isClosing : mark->number != log.fileNumber();
}

/// Closes after another failure, which is the one to be told: a failure here is passed over.
void closeQuietly(Database& database) noexcept
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            database.close();
        } catch (...) {
        }
    }
}

/// \param values null for a file without them
RunProgress replay(LogContents const& log, Recovery::KeptValues* values, Story const& story,
                   std::string const& output)
{
    if (!log.hasStart())
        Exception::raise(Sites::NotRecovered, "the run had not begun to write");
    Database database;
    try {
        return Recovery::Replay(log, values, database).writeTo(output, story);
    } catch (DamagedRecord const& error) {
        closeQuietly(database);
        Exception::raise(Sites::NotRecovered,
                         Exception::sentence("the recovery log is damaged: ", error.what()));
    } catch (...) {
        closeQuietly(database);
        throw;
    }
}

/// What there is of a run that may still be going on, at one moment.
struct Glance
{
    explicit Glance(std::string const& path)
        : mark(markOf(path)), file(RecoveryFolder::Open(path), LogFile::Use::Look),
          log(file.read()), story(storyOf(log))
    {
        story.progress.isGoingOn = file.isHeld();
        // A run that is being opened has its mark by now, and one that closes had it before.
        story.progress.isOverwritten =
            isOfAnother(mark, log, story) && isOfAnother(markOf(path), log, story);
        if (!file.isHeld() || story.progress.damage.empty())
            return;
        // Where a record was being noted, the next look finds it whole, or others behind it.
        LogContents const next(file.read());
        if (next.end() != log.end())
            story.progress.damage.clear();
    }

    std::optional<FileMark> mark;
    LogFile file;
    LogContents log;
    Story story;
};

} // namespace

struct InterruptedRun::Content
{
    explicit Content(std::string const& path)
        : modelFile(path), folder(RecoveryFolder::Open(path)), file(folder, LogFile::Use::Recover),
          log(file.read()), story(storyOf(log))
    {
        story.progress.isOverwritten = isOfAnother(markOf(path), log, story);
    }

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
    if (isBeside(path))
        return;
    std::string const folder = RecoveryFolder::PathFor(path);
    if (Zyl2Util::FileExists(folder.c_str()))
        RecoveryFolder::Open(path).Remove();
}

RunProgress InterruptedRun::progressOf(std::string const& path)
{
    return Glance(path).story.progress;
}

RunProgress InterruptedRun::writeOutlineOf(std::string const& path, std::string const& output)
{
    Glance const glance(path);
    RunProgress progress = replay(glance.log, nullptr, glance.story, output);
    progress.isGoingOn = glance.story.progress.isGoingOn;
    progress.isOverwritten = glance.story.progress.isOverwritten;
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
    Recovery::KeptValues values(content_->folder, content_->modelFile);
    return replay(content_->log, &values, content_->story, output);
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
