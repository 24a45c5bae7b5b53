#include "Zyl2/Mpi/Inbox.h"

#include "Zyl2/Mpi/Message.h"
#include "Zyl2/Util/SignalsBlocked.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace Zyl2 {
namespace Mpi {

namespace {

/// So many ranks may have a message on its way. More would take memory, and bring nothing: their
/// turn comes one after the other.
constexpr int MostSlots = 8;

} // namespace

Inbox::Inbox(MPI_Comm file, int senders, std::size_t messageBytes)
    : file_(file), messageBytes_(messageBytes), senders_(senders)
{
    auto const count = static_cast<std::size_t>(std::min(senders, MostSlots));
    slots_.resize(count);
    requests_.assign(count, MPI_REQUEST_NULL);
    indices_.resize(count);
    statuses_.resize(count);
    for (Slot& slot : slots_)
        slot.buffer.resize(messageBytes);
    if (count != 0)
        current_.resize(messageBytes);
}

std::exception_ptr Inbox::receive(std::function<void()> const& read)
{
    start();
    std::exception_ptr failure;
    std::thread reader;
    try {
        Zyl2Util::SignalsBlocked const blocked;
        reader = std::thread([&] {
            try {
                read();
            } catch (...) {
                failure = std::current_exception();
            }
            std::lock_guard<std::mutex> const lock(mutex_);
            isReading_ = false;
            wasTaken_.notify_one();
        });
    } catch (...) {
        failure = std::current_exception();
        isReading_ = false;
    }
    for (bool isReading = true; isReading;) {
        post();
        if (!test())
            waitALittle();
        std::lock_guard<std::mutex> const lock(mutex_);
        isReading = isReading_ || !areAllOver();
    }
    if (reader.joinable())
        reader.join();
    return failure;
}

void Inbox::start()
{
    next_ = 1;
    selected_ = 0;
    isLast_ = true;
    position_ = 0;
    length_ = 0;
    isReading_ = true;
    for (Slot& slot : slots_) {
        slot.isHere = false;
        slot.isOver = true;
        slot.sender = 0;
    }
}

/// Lets each rank that may send do so.
void Inbox::post()
{
    std::lock_guard<std::mutex> const lock(mutex_);
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        Slot& slot = slots_[i];
        if (!isReading_)
            slot.isHere = false;
        if (slot.isOnItsWay || slot.isHere)
            continue;
        if (slot.isOver) {
            if (next_ > senders_)
                continue;
            slot.sender = next_++;
            slot.isOver = false;
        }
        slot.isOnItsWay = true;
        MPI_Irecv(slot.buffer.data(), static_cast<int>(messageBytes_), MPI_BYTE, slot.sender,
                  Message::Tag, file_, &requests_[i]);
    }
}

/// Looks for messages that have come.
/// \return whether there were any
bool Inbox::test()
{
    int count = 0;
    MPI_Testsome(static_cast<int>(requests_.size()), requests_.data(), &count, indices_.data(),
                 statuses_.data());
    if (count == MPI_UNDEFINED || count == 0)
        return false;
    pauseMicroseconds_ = 0;
    std::lock_guard<std::mutex> const lock(mutex_);
    for (int i = 0; i < count; ++i) {
        auto const index = static_cast<std::size_t>(indices_[static_cast<std::size_t>(i)]);
        Slot& slot = slots_[index];
        int length = 0;
        MPI_Get_count(&statuses_[static_cast<std::size_t>(i)], MPI_BYTE, &length);
        slot.length = static_cast<std::size_t>(length);
        slot.isOver = slot.buffer[0] != 0;
        slot.isOnItsWay = false;
        slot.isHere = true;
    }
    hasCome_.notify_one();
    return true;
}

bool Inbox::areAllOver() const
{
    return next_ > senders_ &&
           std::all_of(slots_.begin(), slots_.end(), [](Slot const& slot) { return slot.isOver; });
}

/// MPI can't be waited for together with the thread that reads: it is asked again soon, and less
/// often the longer nothing comes.
void Inbox::waitALittle()
{
    constexpr std::size_t Longest = 500;
    pauseMicroseconds_ = std::min(pauseMicroseconds_ * 2 + 10, Longest);
    std::unique_lock<std::mutex> lock(mutex_);
    if (wasTaken_.wait_for(lock, std::chrono::microseconds(pauseMicroseconds_)) ==
        std::cv_status::no_timeout)
        pauseMicroseconds_ = 0;
}

void Inbox::select(int sender)
{
    selected_ = sender;
    isLast_ = false;
    position_ = 0;
    length_ = 0;
}

bool Inbox::isAtEnd()
{
    while (position_ == length_ && !isLast_)
        nextMessage();
    return position_ == length_;
}

std::size_t Inbox::available()
{
    return isAtEnd() ? 0 : length_ - position_;
}

void Inbox::take(void* to, std::size_t count)
{
    auto* place = static_cast<unsigned char*>(to);
    while (count != 0) {
        std::size_t const fitting = std::min(count, available());
        if (fitting == 0)
            throw std::logic_error("a rank has sent less than it announced");
        std::memcpy(place, takeInPlace(fitting), fitting);
        place += fitting;
        count -= fitting;
    }
}

unsigned char const* Inbox::takeInPlace(std::size_t count)
{
    unsigned char const* const place = current_.data() + position_;
    position_ += count;
    return place;
}

/// Changes the buffer that was read for the one that has come.
void Inbox::nextMessage()
{
    std::unique_lock<std::mutex> lock(mutex_);
    auto slot = slots_.end();
    hasCome_.wait(lock, [&] {
        slot = std::find_if(slots_.begin(), slots_.end(), [this](Slot const& candidate) {
            return candidate.isHere && candidate.sender == selected_;
        });
        return slot != slots_.end();
    });
    current_.swap(slot->buffer);
    position_ = Message::HeaderBytes;
    length_ = slot->length;
    isLast_ = slot->isOver;
    slot->isHere = false;
    wasTaken_.notify_one();
}

} // namespace Mpi
} // namespace Zyl2
