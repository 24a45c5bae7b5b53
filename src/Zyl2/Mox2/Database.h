#ifndef ZYL2_MOX2_DATABASE_H
#define ZYL2_MOX2_DATABASE_H

#include "Zyl2/Base/Database.h"
#include "Zyl2/Mox/Tree.h"

#include <cstdint>
#include <memory>

namespace Zyl2 {
namespace Mox2 {

namespace Recovery {
class Recorder;
}

/// Holds the tree of the model that is being written; empty before a saver has run and after
/// `close`.
class Database : public Base::Database
{
public:
    Database();
    /// Closes or forgets; a failure there ends the process.
    ~Database() noexcept override;

    /// \throws InvalidObjectState "Not Empty"
    void assertEmpty() const;
    /// \throws InvalidObjectState "Not initialized"
    void assertNotEmpty() const;
    /// \throws InvalidObjectState "File not open."; "File not opened in write mode"
    void assertOpenedForWriting() const;

    /// Saves what is pending, closes the file and drops the tree. Does nothing when empty. When
    /// saving fails the tree stays, and the next `close` drops it.
    void close() override;

    std::shared_ptr<Zyl2Mox::Tree> tree;
    bool openedForReading = false;
    /// Notes the calls of a model that can be recovered; null for one that can not.
    std::unique_ptr<Recovery::Recorder> recorder;
    /// From the moment a saver has made the tree until `close`.
    bool openedForWriting = false;
    std::int32_t accessMode = 1;

    /// Whether the last `close` wrote to a file that somebody had removed. `close` itself does not
    /// report it as a failure, because the destructor closes too, and must not end the process for
    /// the sake of a file that somebody threw away.
    bool hasWrittenInVain() const { return writtenInVain_; }

    /// As `close`, but in a process that was forked from the one that the file's threads belong to
    /// the tree is dropped, and nothing is written: that process may go on, or end, without a file
    /// that was never its own.
    void closeOrForget();

    /// Drops the tree and lets go of the file as it is.
    void abandon() noexcept;

    /// Waits until all that was added can be had after a loss of power, too.
    /// \return false, without waiting, where the model can't be recovered anyway
    /// \throws InvalidObjectState "File not open."
    /// \throws FileWriteException the system says that it is not on the disk
    bool checkpoint();

    /// Seconds that this model's calls have waited for threads since it was saved, `close`
    /// included.
    double waitedSeconds() const;

private:
    void forgetDatasetPositions();
    void forgetTree();
    void noteClosing();

    bool writtenInVain_ = false;
    /// Seconds that calls have waited in the tree that was dropped last.
    double waitedSeconds_ = 0;
};

} // namespace Mox2
} // namespace Zyl2

#endif
