#ifndef ZYL2_WVF_COMPRESSIONTHREADS_H
#define ZYL2_WVF_COMPRESSIONTHREADS_H

#include "Zyl2/Util/Buffer.h"
#include "Zyl2/Wvf/BlockEncoder.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <sys/types.h>

namespace Zyl2Wvf {

/// Threads that compress blocks while their owner goes on.
///
/// All functions are for the owner's thread. Blocks are taken back in the order in which they were
/// given. The memory of a block is the owner's before it is given and after it is taken back; the
/// threads allocate nothing but what the encoder needs for itself. They start when there is work
/// for them, and end with this object.
class CompressionThreads
{
public:
    /// A block that is compressed, and what becomes of it.
    struct Task
    {
        std::size_t slot = 0;
        Zyl2Util::Buffer content;
        /// Bytes of the content.
        std::uint32_t length = 0;
        /// `BlockStreamCapacity(length)` bytes.
        Zyl2Util::Buffer stream;
        /// Bytes of the stream, when the task is taken back; nothing when it could not be made.
        std::optional<std::size_t> written;
    };

    /// \param most  threads; one more block than that can wait or be worked on
    /// \param level zlib's compression level
    CompressionThreads(unsigned int most, BlockEncoder const& encoder, int level);
    CompressionThreads(CompressionThreads const&) = delete;
    CompressionThreads& operator=(CompressionThreads const&) = delete;

    /// Waits for the blocks that are being compressed, and drops the others.
    /// \pre this is the process that made the object
    ~CompressionThreads();

    /// Whether this is the process that made the object. In one that was forked from it there are
    /// no threads, and nothing else may be called, the destructor included.
    bool IsOwnProcess() const;

    /// Sees to it that a thread will take the next task. Where none can be started, those that
    /// there are have to do; the log system is told. \return whether there is a thread at all
    bool PrepareThread();

    bool IsEmpty() const { return given_ == taken_; }
    bool HasRoom() const { return given_ - taken_ < tasks_.size(); }

    /// \pre there is room, and a thread
    void Give(Task task) noexcept;

    /// Whether the oldest block can be taken back without waiting.
    bool HasFinishedOldest() const;

    /// The oldest block; waits until it is compressed.
    /// \pre not empty
    Task TakeOldest();

    /// Ends the threads, after the blocks that they are compressing.
    void Stop();

    /// The oldest block as it is, compressed or not.
    /// \pre stopped, and not empty
    Task Withdraw() noexcept;

    /// Seconds that `TakeOldest` has waited.
    double GetWaitedSeconds() const { return waitedSeconds_; }

private:
    struct Entry
    {
        Task task;
        bool isFinished = false;
    };

    void Work();
    bool StartThread();
    Entry& EntryOf(std::size_t number) { return tasks_[number % tasks_.size()]; }
    Entry const& EntryOf(std::size_t number) const { return tasks_[number % tasks_.size()]; }

    BlockEncoder const& encoder_;
    int level_;
    pid_t process_;
    std::size_t most_;
    /// Of these, `Work` changes what `mutex_` guards: the entries that were given, `begun_` and
    /// `idle_`.
    std::vector<Entry> tasks_;
    std::size_t given_ = 0;
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    std::size_t idle_ = 0;
    bool isStopping_ = false;
    double waitedSeconds_ = 0;
    mutable std::mutex mutex_;
    std::condition_variable givenSignal_;
    std::condition_variable finishedSignal_;
    std::vector<std::thread> threads_;
};

} // namespace Zyl2Wvf

#endif
