#include "moxread/BlocksAhead.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <utility>

namespace MoxRead {

namespace {

// While one lives, threads that are started get none of the process's signals: those are for the
// threads that were there before.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &previous_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    SignalsBlocked(SignalsBlocked const&) = delete;
    SignalsBlocked& operator=(SignalsBlocked const&) = delete;

private:
    sigset_t previous_{};
};

} // namespace

BlocksAhead::BlocksAhead(Container const& container, std::vector<Slot> slots, Work work)
    : slots_(std::move(slots)), work_(std::move(work)), container_(container),
      loader_(container.file(), container.inflater())
{
    // One block is always left to the taker.
    std::size_t const others = slots_.empty() ? 0 : slots_.size() - 1;
    std::size_t const most = std::min<std::size_t>(container.threads(), others);
    entries_ = std::vector<Entry>(most + 1);
    startThreads(most);
}

BlocksAhead::~BlocksAhead()
{
    {
        std::lock_guard<std::mutex> const lock(mutex_);
        isEnding_ = true;
    }
    begin_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void BlocksAhead::startThreads(std::size_t most)
{
    threads_.reserve(most);
    try {
        SignalsBlocked const blocked;
        while (threads_.size() < most)
            threads_.emplace_back([this] { workOn(); });
    } catch (std::exception const&) {
        // The threads that could be started do the work; without any, `take` does it.
    }
}

bool BlocksAhead::isNext(Slot const& slot) const
{
    return taken_ < slots_.size() && slots_[taken_].number == slot.number;
}

// A block that a thread could not do is done once more, so that what is wrong with it is raised
// here; memory that was short may be there by now.
void BlocksAhead::take(Buffer& content)
{
    std::unique_lock<std::mutex> lock(mutex_);
    std::size_t const number = taken_;
    Entry& entry = entryOf(number);
    if (begun_ == number) {
        ++begun_;
        entry.state = State::Failed;
    }
    finished_.wait(lock, [&] { return entry.state != State::Begun; });
    entry.content.swap(content);
    bool const isToBeDone = entry.state == State::Failed;
    entry.state = State::Waiting;
    ++taken_;
    lock.unlock();
    begin_.notify_one();
    if (isToBeDone)
        work_(loader_, slots_[number], content);
}

bool BlocksAhead::mayBegin() const
{
    return begun_ < slots_.size() && begun_ < taken_ + entries_.size();
}

// What each of the threads does.
void BlocksAhead::workOn()
{
    BlockLoader loader(container_.file(), container_.inflater());
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        begin_.wait(lock, [this] { return isEnding_ || mayBegin(); });
        if (isEnding_)
            return;
        std::size_t const number = begun_++;
        Entry& entry = entryOf(number);
        entry.state = State::Begun;
        lock.unlock();
        State state = State::Finished;
        try {
            work_(loader, slots_[number], entry.content);
        } catch (std::exception const&) {
            state = State::Failed;
        }
        lock.lock();
        entry.state = state;
        finished_.notify_one();
    }
}

} // namespace MoxRead
