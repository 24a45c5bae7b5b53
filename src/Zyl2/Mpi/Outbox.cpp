#include "Zyl2/Mpi/Outbox.h"

#include "Zyl2/Mpi/Message.h"

#include <algorithm>
#include <array>

namespace Zyl2 {
namespace Mpi {

namespace {

/// Comes back when the writer has begun to take the message: sent in any other way, small ones
/// would all be on their way at once, and fill the memory of a writer that is not at this rank yet.
void send(unsigned char const* message, std::size_t length, MPI_Comm file)
{
    MPI_Ssend(message, static_cast<int>(length), MPI_BYTE, 0, Message::Tag, file);
}

} // namespace

void Outbox::put(void const* bytes, std::size_t count)
{
    auto const* from = static_cast<unsigned char const*>(bytes);
    while (count != 0) {
        std::vector<unsigned char>& message = openMessage();
        std::size_t const fitting = std::min(count, messageBytes_ - message.size());
        message.insert(message.end(), from, from + fitting);
        from += fitting;
        count -= fitting;
    }
}

void Outbox::sendTo(MPI_Comm file)
{
    std::array<unsigned char, Message::HeaderBytes> const nothing = {1};
    if (messages_.empty())
        send(nothing.data(), nothing.size(), file);
    else
        messages_.back().front() = 1;
    for (std::vector<unsigned char> const& message : messages_)
        send(message.data(), message.size(), file);
    clear();
}

void Outbox::clear()
{
    messages_.clear();
}

std::vector<unsigned char>& Outbox::openMessage()
{
    if (messages_.empty() || messages_.back().size() == messageBytes_) {
        std::vector<unsigned char> message(Message::HeaderBytes);
        messages_.push_back(std::move(message));
    }
    return messages_.back();
}

} // namespace Mpi
} // namespace Zyl2
