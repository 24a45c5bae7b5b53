#ifndef MOXREAD_BLOCKSAHEAD_H
#define MOXREAD_BLOCKSAHEAD_H

#include "moxread/BlockLoader.h"
#include "moxread/Buffer.h"
#include "moxread/Container.h"
#include "moxread/Export.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace MoxRead {

/// Works on blocks in threads of its own, ahead of whoever takes them in their order.
///
/// Not more than one block for each thread, and one more, are worked on or wait to be taken. All
/// functions are for the thread that made the object.
class MOXREAD_EXPORT BlocksAhead
{
public:
    /// What is done with a block: it fills the buffer, or leaves it alone.
    using Work = std::function<void(BlockLoader&, Slot const&, Buffer&)>;

    /// \param slots of a container's; as many threads as its options name are started, and where
    ///              that is none, or none can be, `take` does all
    BlocksAhead(Container const& container, std::vector<Slot> slots, Work work);
    /// Waits for the blocks that are being worked on, and drops the others.
    ~BlocksAhead();
    BlocksAhead(BlocksAhead const&) = delete;
    BlocksAhead& operator=(BlocksAhead const&) = delete;

    /// Whether the next block to be taken is this one.
    bool isNext(Slot const& slot) const;

    /// Exchanges the next block for a buffer that is of no use any more. Raises what working on the
    /// block raises; then it counts as taken.
    /// \pre there is a next one
    void take(Buffer& content);

private:
    enum class State
    {
        Waiting,
        Begun,
        Finished,
        Failed
    };

    struct Entry
    {
        Buffer content;
        State state = State::Waiting;
    };

    void startThreads(std::size_t most);
    void workOn();
    bool mayBegin() const;
    Entry& entryOf(std::size_t number) { return entries_[number % entries_.size()]; }

    std::vector<Slot> slots_;
    Work work_;
    Container const& container_;
    /// Loads the blocks that `take` has to work on itself, because no thread has.
    BlockLoader loader_;

    std::mutex mutex_;
    std::condition_variable begin_;
    std::condition_variable finished_;
    /// Guarded by the mutex, contents of begun blocks apart: those are of one thread.
    std::vector<Entry> entries_;
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    bool isEnding_ = false;

    std::vector<std::thread> threads_;
};

} // namespace MoxRead

#endif
