#ifndef ZYL2_WVF_KEPTBLOCKS_H
#define ZYL2_WVF_KEPTBLOCKS_H

#include "Zyl2/Util/MappedFile.h"
#include "Zyl2/Wvf/BlockKeeper.h"
#include "Zyl2/Wvf/LogLock.h"
#include "Zyl2/Wvf/RecoveryFolder.h"
#include "Zyl2/Wvf/RecoveryLog.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace Zyl2Wvf {

/// Keeps blocks in files that are mapped, and notes in the log which file has what.
class KeptBlocks final : public BlockKeeper
{
public:
    /// Makes folder and log of a model file, before that is opened.
    /// \throws what `RecoveryFolder::Make` and `RecoveryLog` throw; nothing is left behind then
    KeptBlocks(std::string const& modelFile, bool overwrite);
    /// Removes the folder where the run never began.
    ~KeptBlocks() override;
    KeptBlocks(KeptBlocks const&) = delete;
    KeptBlocks& operator=(KeptBlocks const&) = delete;

    void MakeRoom(Block& block, std::size_t slot, std::uint64_t position, std::size_t size,
                  std::uint32_t limit) override;
    void NoteFilled(std::uint64_t position, unsigned char const* bytes, std::size_t size) override;
    void NoteSaved(std::size_t slot, std::uint64_t offset, std::uint32_t size,
                   std::uint32_t contentLength, std::FILE* stream) override;
    bool IsOwnProcess() const override;

    /// Marks the model file as the one that the log is of: a later run that leaves the log alone
    /// makes a file without the mark.
    /// \param stream of the model file, which is new
    /// \throws FileWriteException the system refuses
    void Mark(std::FILE* stream);

    /// The model file is open, and the log says how it is written: from here on it stays.
    void NoteBegun() { hasBegun_ = true; }

    /// Notes that the file is being closed: until it is, no content is given up any more.
    /// \throws FileWriteException there is no room to note it
    void NoteClosing();

    /// Removes the folder: the file is whole and closed.
    void Remove() noexcept;

    /// Waits until all is on the disk that a recovery needs.
    /// \param stream of the model file
    /// \throws FileWriteException the system says that it is not
    void Synchronise(std::FILE* stream);

    RecoveryLog& GetLog() { return *log_; }

private:
    struct Region
    {
        Region(int descriptor, std::uint64_t fileNumber) : file(descriptor), number(fileNumber) {}

        Zyl2Util::MappedFile file;
        std::uint64_t number;
        /// Slot of the block that the file keeps; none while the file waits for another block.
        std::optional<std::size_t> slot;
        /// Position of the block's first byte in the stream of its key.
        std::uint64_t position = 0;
        /// Whether what it holds was part of a checkpoint.
        bool isOnDisk = false;
    };

    Region* Find(std::optional<std::size_t> slot);
    Region& Begin(std::size_t slot, std::uint64_t position);
    Region& AddRegion();

    RecoveryFolder folder_;
    std::optional<RecoveryLog> log_;
    std::optional<LogLock> lock_;
    std::vector<std::unique_ptr<Region>> regions_;
    pid_t process_;
    bool hasBegun_ = false;
    bool isClosing_ = false;
};

} // namespace Zyl2Wvf

#endif
