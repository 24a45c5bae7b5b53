#ifndef ZYL2_MPI_INBOX_H
#define ZYL2_MPI_INBOX_H

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <vector>

#include <mpi.h>

namespace Zyl2 {
namespace Mpi {

/// What a writer gets from the other ranks of its file. The thread that calls `receive` speaks with
/// MPI; another reads one rank's bytes after the other's, so that messages come in while it
/// compresses and writes.
///
/// Of each of the next few ranks one message may be on its way; a rank whose turn is far away waits
/// with sending. The buffers are had once, when there is somebody to catch a lack of memory.
class Inbox
{
public:
    /// \param senders      number of ranks that send; they are 1, 2, 3 and so on
    /// \param messageBytes the most bytes of a message
    Inbox(MPI_Comm file, int senders, std::size_t messageBytes);

    /// Receives all that the ranks send until their last messages.
    /// \param read called in a thread of its own; may use `take` and `pieceOf`. When it throws, the
    ///             rest is received and dropped, so that no sender is left waiting.
    /// \return what `read` threw
    std::exception_ptr receive(std::function<void()> const& read);

    // For `read` only:

    /// Goes on to a rank's bytes. Ranks have to be read in ascending order.
    void select(int sender);
    /// Whether all bytes of the selected rank were taken.
    bool isAtEnd();
    /// Takes exactly so many bytes.
    void take(void* to, std::size_t count);
    /// Bytes that lie one behind the other in the current message; at least one unless at the end.
    /// They stay where they are until the next call that takes any.
    std::size_t available();
    unsigned char const* takeInPlace(std::size_t count);

private:
    /// A message of one rank that is on its way, or has come and waits for its turn.
    struct Slot
    {
        int sender = 0;
        bool isOnItsWay = false;
        bool isHere = false;
        /// Whether the last message of the rank has come.
        bool isOver = false;
        std::size_t length = 0;
        std::vector<unsigned char> buffer;
    };

    void start();
    void post();
    bool test();
    bool areAllOver() const;
    void waitALittle();
    void nextMessage();

    MPI_Comm file_;
    std::size_t messageBytes_;
    std::vector<Slot> slots_;
    std::vector<MPI_Request> requests_;
    std::vector<int> indices_;
    std::vector<MPI_Status> statuses_;
    int senders_;
    /// The next rank that has no slot yet.
    int next_ = 1;

    std::mutex mutex_;
    std::condition_variable hasCome_;
    std::condition_variable wasTaken_;
    bool isReading_ = false;
    std::size_t pauseMicroseconds_ = 0;

    // Of the reading thread:
    int selected_ = 0;
    bool isLast_ = true;
    std::vector<unsigned char> current_;
    std::size_t position_ = 0;
    std::size_t length_ = 0;
};

} // namespace Mpi
} // namespace Zyl2

#endif
