#ifndef COMMON_TEMPORARYPATH_H
#define COMMON_TEMPORARYPATH_H

#include <filesystem>

namespace Common {

/// A file or folder beside the output that it becomes, which ends with this object, or with the
/// process if a signal ends that. For one thread only.
class TemporaryPath
{
public:
    /// Makes what the path names, and says whether it did: false when there is something else of
    /// that name.
    using Maker = bool (*)(std::filesystem::path const& path);

    /// Passes on what the maker throws.
    TemporaryPath(std::filesystem::path const& target, Maker make);
    ~TemporaryPath();

    TemporaryPath(TemporaryPath const&) = delete;
    TemporaryPath& operator=(TemporaryPath const&) = delete;

    std::filesystem::path const& path() const { return path_; }

    /// Removes all there are. A signal's handler may call it: it takes no memory and no locks.
    static void removeAll() noexcept;
    /// In a new process: those of its parent are not its own.
    static void forgetAll() noexcept;
    /// Removes what a process that is no more has left beside that target.
    static void removeLeftBy(int process, std::filesystem::path const& target);

private:
    static TemporaryPath* latest_;

    std::filesystem::path path_;
    TemporaryPath* before_ = nullptr;
};

} // namespace Common

#endif
