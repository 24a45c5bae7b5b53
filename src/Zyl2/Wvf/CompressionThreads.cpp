#include "Zyl2/Wvf/CompressionThreads.h"

#include "Zyl2/Log/Statement.h"
#include "Zyl2/Util/SignalsBlocked.h"
#include "Zyl2/Wvf/BlockStream.h"

#include <chrono>
#include <exception>
#include <utility>

#include <unistd.h>

namespace Zyl2Wvf {

CompressionThreads::CompressionThreads(unsigned int most, BlockEncoder const& encoder, int level)
    : encoder_(encoder), level_(level), process_(getpid()), most_(most), tasks_(most_ + 1)
{
    threads_.reserve(most_);
}

CompressionThreads::~CompressionThreads()
{
    Stop();
}

bool CompressionThreads::IsOwnProcess() const
{
    return getpid() == process_;
}

bool CompressionThreads::PrepareThread()
{
    std::size_t const waiting = [this] {
        std::lock_guard<std::mutex> const lock(mutex_);
        return given_ - begun_ < idle_ ? 0 : given_ - begun_ + 1 - idle_;
    }();
    if (waiting != 0 && threads_.size() < most_ && !StartThread())
        most_ = threads_.size();
    return !threads_.empty();
}

/// \return whether it runs
bool CompressionThreads::StartThread()
{
    try {
        Zyl2Util::SignalsBlocked const blocked;
        threads_.emplace_back([this] { Work(); });
        return true;
    } catch (std::exception const& failure) {
        Zyl2::Log::write("Zyl2/Wvf/CompressionThreads", BOOST_CURRENT_FUNCTION, __LINE__, "Thread ",
                         threads_.size() + 1, " of ", most_, " can't be started: ", failure.what(),
                         "; going on with ", threads_.size());
    }
    return false;
}

void CompressionThreads::Give(Task task) noexcept
{
    {
        std::lock_guard<std::mutex> const lock(mutex_);
        EntryOf(given_) = Entry{std::move(task), false};
        ++given_;
    }
    givenSignal_.notify_one();
}

bool CompressionThreads::HasFinishedOldest() const
{
    if (IsEmpty())
        return false;
    std::lock_guard<std::mutex> const lock(mutex_);
    return EntryOf(taken_).isFinished;
}

CompressionThreads::Task CompressionThreads::TakeOldest()
{
    std::unique_lock<std::mutex> lock(mutex_);
    Entry& oldest = EntryOf(taken_);
    if (!oldest.isFinished) {
        auto const start = std::chrono::steady_clock::now();
        finishedSignal_.wait(lock, [&oldest] { return oldest.isFinished; });
        waitedSeconds_ +=
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    ++taken_;
    return std::move(oldest.task);
}

void CompressionThreads::Stop()
{
    {
        std::lock_guard<std::mutex> const lock(mutex_);
        isStopping_ = true;
    }
    givenSignal_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

CompressionThreads::Task CompressionThreads::Withdraw() noexcept
{
    return std::move(EntryOf(taken_++).task);
}

/// What each of the threads does.
void CompressionThreads::Work()
{
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        ++idle_;
        givenSignal_.wait(lock, [this] { return isStopping_ || begun_ < given_; });
        --idle_;
        if (isStopping_)
            return;
        Entry& entry = EntryOf(begun_++);
        Task& task = entry.task;
        lock.unlock();
        task.written = MakeBlockStream(task.content.GetData(), task.length, task.stream.GetData(),
                                       encoder_, level_);
        lock.lock();
        entry.isFinished = true;
        finishedSignal_.notify_one();
    }
}

} // namespace Zyl2Wvf
