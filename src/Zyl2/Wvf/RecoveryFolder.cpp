#include "Zyl2/Wvf/RecoveryFolder.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/LogLock.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace Sites = Zyl2::Exception::Sites::Recovery;
using Zyl2::Exception::raise;
using Zyl2::Exception::sentence;

constexpr char const* Suffix = ".recovery";
constexpr char const* BlockPrefix = "block-";
constexpr mode_t AllMayRead = 0777;
constexpr mode_t AllMayWrite = 0666;

/// The absolute path without symbolic links, as far as the path exists.
std::string Resolved(std::string const& path)
{
    std::unique_ptr<char, void (*)(void*)> const resolved(realpath(path.c_str(), nullptr),
                                                          std::free);
    if (resolved == nullptr)
        return path;
    return resolved.get();
}

[[noreturn]] void RaiseNotOpened(std::string const& path, char const* reason)
{
    std::string const message = Sites::NotOpened.text + path + '"';
    auto site = Sites::NotOpened;
    site.text = message.c_str();
    raise(site, reason);
}

[[noreturn]] void RaiseNotOpened(std::string const& path, int error)
{
    RaiseNotOpened(path, std::strerror(error));
}

int OpenFolder(std::string const& path)
{
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

bool IsOfARun(char const* name)
{
    return std::strncmp(name, BlockPrefix, std::strlen(BlockPrefix)) == 0 ||
           std::strcmp(name, RecoveryFolder::ResultName) == 0;
}

bool HasZeroByte(std::string const& path)
{
    return path.find('\0') != std::string::npos;
}

} // namespace

std::string RecoveryFolder::PathFor(std::string const& modelFile)
{
    return Resolved(modelFile) + Suffix;
}

bool RecoveryFolder::IsBeside(std::string const& modelFile)
{
    return ::access((PathFor(modelFile) + '/' + LogName).c_str(), F_OK) == 0;
}

/// \throws FileOpenException an earlier run is not to be touched
void RecoveryFolder::RefuseUnless(bool overwrite, std::string const& modelFile)
{
    RecoveryFolder const earlier = Open(modelFile);
    int const log = earlier.OpenFile(LogName, O_RDWR);
    int const error = log < 0 ? errno : 0;
    // Without a log there are but the remains of a run that had removed it. One that can't be
    // opened is there all the same.
    if (log < 0 && error != ENOENT)
        RaiseNotOpened(earlier.GetPath() + '/' + LogName, error);
    std::optional<LogHolder> const writer = log < 0 ? std::nullopt : LogLock::HolderOf(log);
    if (log >= 0)
        ::close(log);
    if (writer)
        raise(Sites::EarlierRun, sentence(modelFile, " is still being written", writer->GetText()));
    if (!overwrite && log >= 0)
        raise(Sites::EarlierRun,
              sentence("an earlier run of ", modelFile, " can be recovered: mox recover ",
                       modelFile, "; overwriting was not asked for"));
    earlier.Remove();
}

RecoveryFolder RecoveryFolder::Make(std::string const& modelFile, bool overwrite)
{
    // The system would take what comes before the zero byte for another path.
    if (HasZeroByte(modelFile))
        RaiseNotOpened(modelFile.substr(0, modelFile.find('\0')), "the path holds a zero byte");
    std::string path = PathFor(modelFile);
    bool isMade = ::mkdir(path.c_str(), AllMayRead) == 0;
    if (!isMade && errno == EEXIST) {
        RefuseUnless(overwrite, modelFile);
        isMade = ::mkdir(path.c_str(), AllMayRead) == 0;
    }
    if (!isMade)
        RaiseNotOpened(path, errno);
    int const descriptor = OpenFolder(path);
    if (descriptor < 0) {
        int const error = errno;
        ::rmdir(path.c_str());
        RaiseNotOpened(path, error);
    }
    std::string resolved = Resolved(path);
    return {std::move(resolved), descriptor};
}

RecoveryFolder RecoveryFolder::Open(std::string const& modelFile)
{
    std::string path = Resolved(PathFor(modelFile));
    int const descriptor = OpenFolder(path);
    if (descriptor < 0)
        RaiseNotOpened(path, errno);
    return {std::move(path), descriptor};
}

RecoveryFolder::RecoveryFolder(std::string path, int descriptor)
    : path_(std::move(path)), descriptor_(descriptor)
{}

RecoveryFolder::~RecoveryFolder()
{
    ::close(descriptor_);
}

int RecoveryFolder::MakeFile(std::string const& name) const noexcept
{
    return ::openat(descriptor_, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, AllMayWrite);
}

int RecoveryFolder::OpenFile(std::string const& name, int flags) const noexcept
{
    return ::openat(descriptor_, name.c_str(), flags | O_CLOEXEC | O_NOFOLLOW);
}

void RecoveryFolder::RemoveFile(std::string const& name) const noexcept
{
    ::unlinkat(descriptor_, name.c_str(), 0);
}

void RecoveryFolder::Remove() const noexcept
{
    // Without its log, nobody takes the rest for something that can be recovered.
    ::unlinkat(descriptor_, LogName, 0);
    int const copy = ::openat(descriptor_, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const list = copy < 0 ? nullptr : ::fdopendir(copy);
    if (list != nullptr) {
        while (dirent const* const entry = ::readdir(list))
            if (IsOfARun(entry->d_name))
                ::unlinkat(descriptor_, entry->d_name, 0);
        ::closedir(list);
    } else if (copy >= 0) {
        ::close(copy);
    }
    ::rmdir(path_.c_str());
}

int RecoveryFolder::Synchronise() const noexcept
{
    int const parent = ::openat(descriptor_, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (parent < 0)
        return errno;
    bool const isDone = ::fsync(descriptor_) == 0 && ::fsync(parent) == 0;
    int const error = isDone ? 0 : errno;
    ::close(parent);
    return error;
}

} // namespace Zyl2Wvf
