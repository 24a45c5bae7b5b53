// Payloads of the records that are appended here:
//
//     begun     slot, 8 | number of the file, 8 | position in the key's stream, 8
//     filled    position in the key's stream, 8 | bytes, 8 | their CRC-32, 4
//     saved     slot, 8 | offset in the model file, 8 | bytes there, 4 | bytes of content, 4
//     closing   nothing

#include "Zyl2/Wvf/KeptBlocks.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/Checksum.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace Sites = Zyl2::Exception::Sites::Recovery;
using Type = RecoveryLog::Type;

/// Room on the disk comes in pages, so that growing by less than one saves nothing.
constexpr std::size_t SmallestGrowth = 4096;
constexpr std::size_t LargestGrowth = 16777216;

[[noreturn]] void RaiseNotWritten(char const* what, int error)
{
    Zyl2::Exception::raise(Sites::NotKept,
                           Zyl2::Exception::sentence(what, ": ", std::strerror(error)));
}

int MakeLog(RecoveryFolder const& folder)
{
    int const log = folder.MakeFile(RecoveryFolder::LogName);
    if (log < 0)
        RaiseNotWritten("no recovery log", errno);
    return log;
}

/// A file of its own: descriptors of one that was opened once share its lock, and a forked process
/// gets copies of them.
int OpenForLock(RecoveryFolder const& folder)
{
    int const log = folder.OpenFile(RecoveryFolder::LogName, O_RDWR);
    if (log < 0)
        RaiseNotWritten("no recovery log", errno);
    return log;
}

constexpr std::size_t RoundUp(std::size_t size, std::size_t step)
{
    return (size + step - 1) / step * step;
}

/// More than is needed, so that a block grows in few steps; but a full block gets nothing more.
std::size_t RoomFor(std::size_t needed, std::size_t limit)
{
    std::size_t const generous =
        RoundUp(needed, std::clamp(needed / 8, SmallestGrowth, LargestGrowth));
    return std::min(generous, RoundUp(std::max(needed, limit + 1), SmallestGrowth));
}

/// A number for the model file of a run: never 0, and another one for each run.
std::uint32_t NewFileNumber()
{
    struct timespec now
    {};
    clock_gettime(CLOCK_REALTIME, &now);
    auto const bytes = Packed(std::int64_t(now.tv_sec), std::int64_t(now.tv_nsec), getpid());
    return std::max(Checksum(0, bytes.data(), bytes.size()), std::uint32_t(1));
}

} // namespace

KeptBlocks::KeptBlocks(std::string const& modelFile, bool overwrite)
    : folder_(RecoveryFolder::Make(modelFile, overwrite)), process_(getpid())
{
    try {
        log_.emplace(MakeLog(folder_));
        lock_.emplace(OpenForLock(folder_));
        static_cast<void>(lock_->Take());
    } catch (...) {
        folder_.Remove();
        throw;
    }
}

KeptBlocks::~KeptBlocks()
{
    if (!hasBegun_ && IsOwnProcess())
        folder_.Remove();
}

void KeptBlocks::Mark(std::FILE* stream)
{
    std::uint32_t const number = NewFileNumber();
    // The stream writes the root index over it.
    if (pwrite(fileno(stream), &number, sizeof number, RecoveryLog::FileNumberInModelAt) !=
        static_cast<ssize_t>(sizeof number))
        RaiseNotWritten("the model file", errno);
    log_->SetFileNumber(number);
}

void KeptBlocks::MakeRoom(Block& block, std::size_t slot, std::uint64_t position, std::size_t size,
                          std::uint32_t limit)
{
    std::uint32_t const length = block.GetLength();
    // The block refuses what is too long for it.
    if (size > Block::MaximumLength - length)
        return;
    Region* region = Find(slot);
    // A slot that was given back without a byte in it may have come to another place since.
    if (region == nullptr || region->position != position)
        region = &Begin(slot, position);
    Zyl2Util::MappedFile& file = region->file;
    // A block that would be filled to its last byte asks for more.
    std::size_t const needed = std::size_t(length) + size + 1;
    if (needed > file.GetSize()) {
        int const error = file.Grow(RoomFor(needed, limit));
        if (error != 0)
            RaiseNotWritten("no room for a block beside the model file", error);
    }
    if (block.GetData() != file.GetData() || block.GetCapacity() != file.GetSize())
        block.Adopt(Zyl2Util::Buffer::Borrow(file.GetData(), file.GetSize()), length);
}

void KeptBlocks::NoteFilled(std::uint64_t position, unsigned char const* bytes, std::size_t size)
{
    log_->Append(Type::Filled, Packed(position, std::uint64_t(size), Checksum(0, bytes, size)));
}

void KeptBlocks::NoteSaved(std::size_t slot, std::uint64_t offset, std::uint32_t size,
                           std::uint32_t contentLength, std::FILE* stream)
{
    Region* const region = Find(slot);
    if (isClosing_ || region == nullptr)
        return;
    if (std::fflush(stream) != 0)
        RaiseNotWritten("the model file", errno);
    if (region->isOnDisk && fdatasync(fileno(stream)) != 0)
        RaiseNotWritten("the model file", errno);
    log_->Append(Type::BlockSaved, Packed(std::uint64_t(slot), offset, size, contentLength));
    if (region->isOnDisk) {
        int const error = log_->Synchronise();
        if (error != 0)
            RaiseNotWritten("the recovery log", error);
    }
    region->slot.reset();
    region->isOnDisk = false;
}

bool KeptBlocks::IsOwnProcess() const
{
    return getpid() == process_;
}

void KeptBlocks::NoteClosing()
{
    log_->Begin(Type::Closing, 0);
    log_->Finish();
    isClosing_ = true;
}

void KeptBlocks::Remove() noexcept
{
    folder_.Remove();
}

void KeptBlocks::Synchronise(std::FILE* stream)
{
    if (std::fflush(stream) != 0 || fdatasync(fileno(stream)) != 0)
        RaiseNotWritten("the model file", errno);
    for (auto const& region : regions_) {
        if (!region->slot)
            continue;
        int const error = region->file.Synchronise();
        if (error != 0)
            RaiseNotWritten("a block beside the model file", error);
        region->isOnDisk = true;
    }
    int error = log_->Synchronise();
    if (error == 0)
        error = folder_.Synchronise();
    if (error != 0)
        RaiseNotWritten("the recovery log", error);
}

/// The region that keeps the slot's block; null when none does.
KeptBlocks::Region* KeptBlocks::Find(std::optional<std::size_t> slot)
{
    // Searched from the end, since the newest region is asked for most often.
    auto const found = std::find_if(regions_.rbegin(), regions_.rend(),
                                    [&](auto const& region) { return region->slot == slot; });
    return found == regions_.rend() ? nullptr : found->get();
}

KeptBlocks::Region& KeptBlocks::Begin(std::size_t slot, std::uint64_t position)
{
    Region* reusable = Find(slot);
    if (reusable == nullptr)
        reusable = Find(std::nullopt);
    Region& region = reusable == nullptr ? AddRegion() : *reusable;
    log_->Append(Type::BlockBegun, Packed(std::uint64_t(slot), region.number, position));
    region.slot = slot;
    region.position = position;
    return region;
}

KeptBlocks::Region& KeptBlocks::AddRegion()
{
    std::uint64_t const number = regions_.size() + 1;
    regions_.reserve(regions_.size() + 1);
    int const file = folder_.MakeFile("block-" + std::to_string(number));
    if (file < 0)
        RaiseNotWritten("no file for a block beside the model file", errno);
    std::unique_ptr<Region> region;
    try {
        region = std::make_unique<Region>(file, number);
    } catch (...) {
        ::close(file);
        folder_.RemoveFile("block-" + std::to_string(number));
        throw;
    }
    regions_.push_back(std::move(region));
    return *regions_.back();
}

} // namespace Zyl2Wvf
