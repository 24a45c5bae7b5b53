#include "Zyl2/Mpi/Outbox.h"

#include "Zyl2/Mpi/Message.h"

#include <algorithm>
#include <array>

namespace Zyl2 {
namespace Mpi {

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
        MPI_Send(nothing.data(), static_cast<int>(nothing.size()), MPI_BYTE, 0, Message::Tag, file);
    else
        messages_.back().front() = 1;
    for (std::vector<unsigned char> const& message : messages_)
        MPI_Send(message.data(), static_cast<int>(message.size()), MPI_BYTE, 0, Message::Tag, file);
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
