#include "TemporaryPath.h"

#include "SignalsHeld.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Common {

namespace {

std::string stemOf(std::filesystem::path const& target, int process)
{
    return target.string() + ".partial-" + std::to_string(process) + "-";
}

// The library's own functions that list a folder take memory, which a signal's handler must not.
// What the system call gives for an entry, with the name behind it up to a zero byte:
//   u64 inode | s64 place of the next | u16 size of the entry | u8 type | name
constexpr std::size_t sizeAt = 16;
constexpr std::size_t nameAt = 19;

void removeTree(int parent, char const* name) noexcept;

bool isFolderItself(char const* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

/// Whether there were some among these bytes.
bool removeEntries(int folder, char const* bytes, std::size_t size) noexcept
{
    bool hasEntries = false;
    for (std::size_t at = 0; at < size;) {
        char const* const name = bytes + at + nameAt;
        if (!isFolderItself(name)) {
            removeTree(folder, name);
            hasEntries = true;
        }
        std::uint16_t entrySize = 0;
        std::memcpy(&entrySize, bytes + at + sizeAt, sizeof(entrySize));
        at += entrySize;
    }
    return hasEntries;
}

void removeContent(int folder) noexcept
{
    // What cannot be removed must not keep the process alive.
    constexpr int passes = 1000;
    alignas(std::uint64_t) char bytes[2048];
    bool hasEntries = true;
    // Entries that go may move others to where the list was read already.
    for (int pass = 0; hasEntries && pass < passes; ++pass) {
        hasEntries = false;
        ::lseek(folder, 0, SEEK_SET);
        long size = 0;
        while ((size = ::syscall(SYS_getdents64, folder, bytes, sizeof(bytes))) > 0)
            hasEntries = removeEntries(folder, bytes, static_cast<std::size_t>(size)) || hasEntries;
    }
}

void removeTree(int parent, char const* name) noexcept
{
    if (::unlinkat(parent, name, 0) == 0)
        return;
    int const folder = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return;
    removeContent(folder);
    ::close(folder);
    ::unlinkat(parent, name, AT_REMOVEDIR);
}

} // namespace

TemporaryPath* TemporaryPath::latest_ = nullptr;

TemporaryPath::TemporaryPath(std::filesystem::path const& target, Maker make)
{
    // Nothing may be there that is not in the list, nor be in the list and somebody else's.
    SignalsHeld const held;
    std::string const stem = stemOf(target, ::getpid());
    int attempt = 0;
    do {
        path_ = stem + std::to_string(attempt++);
    } while (!make(path_));
    before_ = latest_;
    latest_ = this;
}

TemporaryPath::~TemporaryPath()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    SignalsHeld const held;
    for (TemporaryPath** place = &latest_; *place != nullptr; place = &(*place)->before_) {
        if (*place == this) {
            *place = before_;
            return;
        }
    }
}

void TemporaryPath::removeAll() noexcept
{
    for (TemporaryPath const* one = latest_; one != nullptr; one = one->before_)
        removeTree(AT_FDCWD, one->path_.c_str());
}

void TemporaryPath::forgetAll() noexcept
{
    latest_ = nullptr;
}

void TemporaryPath::removeLeftBy(int process, std::filesystem::path const& target)
{
    std::error_code ignored;
    std::string const stem = stemOf(target, process);
    for (int attempt = 0; std::filesystem::remove(stem + std::to_string(attempt), ignored);)
        ++attempt;
}

} // namespace Common
