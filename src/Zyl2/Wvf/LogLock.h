#ifndef ZYL2_WVF_LOGLOCK_H
#define ZYL2_WVF_LOGLOCK_H

#include <optional>
#include <string>

namespace Zyl2Wvf {

/// Who writes beside a recovery log, or recovers from it.
struct LogHolder
{
    /// Its number; 0 where the system does not tell, as of one in another container.
    int process;

    /// Words that follow on what it does, such as " by process 7"; none where that is not known.
    std::string GetText() const;
};

/// The lock on a recovery log, for as long as the object and this process live. It is not lost when
/// the host, or this library, opens and closes the log somewhere else, and a process that is forked
/// from this one does not keep it.
class LogLock
{
public:
    /// \param log descriptor of the log, open for writing; this object closes it
    explicit LogLock(int log);
    ~LogLock();
    LogLock(LogLock const&) = delete;
    LogLock& operator=(LogLock const&) = delete;

    /// \return who has it already; none where it is this object's, or the system knows no locks
    std::optional<LogHolder> Take() const noexcept { return Take(descriptor_); }

    /// Takes a lock that goes with the descriptor.
    static std::optional<LogHolder> Take(int log) noexcept;

    /// \param log open for reading at least
    /// \return who has the lock; none for nobody, or where the system knows no locks
    static std::optional<LogHolder> HolderOf(int log) noexcept;

private:
    static void RegisterForks();
    static void BeforeFork() noexcept;
    static void AfterFork() noexcept;
    static void AfterForkInChild() noexcept;

    int descriptor_;
    /// The next in the list of all locks of the process.
    LogLock* next_ = nullptr;
};

} // namespace Zyl2Wvf

#endif
