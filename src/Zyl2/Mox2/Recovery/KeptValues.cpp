#include "Zyl2/Mox2/Recovery/KeptValues.h"

#include "Zyl2/Wvf/Checksum.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>

namespace Zyl2 {
namespace Mox2 {
namespace Recovery {

namespace {

constexpr std::size_t lengthPrefix = sizeof(std::uint32_t);
/// Bytes that a byte of a stream can stand for.
constexpr std::uint32_t mostOfOneByte = 1032;

/// \return whether the file has so many bytes there
bool readAt(int file, std::uint64_t offset, unsigned char* place, std::size_t count)
{
    while (count != 0) {
        ssize_t got = -1;
        do
            got = ::pread(file, place, count, static_cast<off_t>(offset));
        while (got < 0 && errno == EINTR);
        if (got <= 0)
            return false;
        place += got;
        offset += static_cast<std::uint64_t>(got);
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

bool hasBytes(int file, std::uint64_t offset, std::uint64_t count)
{
    struct stat status
    {};
    if (file < 0 || ::fstat(file, &status) != 0)
        return false;
    auto const size = static_cast<std::uint64_t>(status.st_size);
    return offset <= size && count <= size - offset;
}

void grow(Zyl2Util::Buffer& buffer, std::size_t size)
{
    if (!buffer.Grow(size))
        throw std::bad_alloc();
}

} // namespace

KeptValues::KeptValues(Zyl2Wvf::RecoveryFolder const& folder, std::string const& modelFile)
    : folder_(folder), modelFile_(::open(modelFile.c_str(), O_RDONLY | O_CLOEXEC))
{}

KeptValues::~KeptValues()
{
    if (modelFile_ >= 0)
        ::close(modelFile_);
}

void KeptValues::noteBegun(std::uint64_t slot, std::uint64_t number, std::uint64_t position)
{
    // A block that stayed empty has the position of the next.
    blocks_[position] = BlockOfRun{slot, number, position, std::nullopt};
    slots_[slot] = position;
}

bool KeptValues::noteSaved(std::uint64_t slot, std::uint64_t offset, std::uint32_t size,
                           std::uint32_t contentLength)
{
    auto const position = slots_.find(slot);
    auto const block = position == slots_.end() ? blocks_.end() : blocks_.find(position->second);
    if (block == blocks_.end() || block->second.slot != slot ||
        contentLength / mostOfOneByte > size)
        return false;
    block->second.saved = Saved{offset, size, contentLength};
    return true;
}

std::uint64_t KeptValues::nextBegun(std::uint64_t position) const
{
    auto const next = blocks_.upper_bound(position);
    return next == blocks_.end() ? std::numeric_limits<std::uint64_t>::max() : next->first;
}

bool KeptValues::has(std::uint64_t position, std::uint64_t length) const
{
    auto const next = blocks_.upper_bound(position);
    if (next == blocks_.begin())
        return false;
    BlockOfRun const& block = std::prev(next)->second;
    std::uint64_t const from = position - block.position;
    if (block.saved)
        return from <= block.saved->contentLength && length <= block.saved->contentLength - from &&
               hasBytes(modelFile_, block.saved->offset, block.saved->size);
    int const file = folder_.OpenFile("block-" + std::to_string(block.number), O_RDONLY);
    bool const isThere = hasBytes(file, from, length);
    if (file >= 0)
        ::close(file);
    return isThere;
}

unsigned char const* KeptValues::find(std::uint64_t position, std::uint64_t length,
                                      std::uint32_t checksum)
{
    auto const next = blocks_.upper_bound(position);
    if (next == blocks_.begin() || length == 0)
        return nullptr;
    BlockOfRun const& block = std::prev(next)->second;
    unsigned char const* const bytes = read(block, position - block.position, length);
    bool const isSound = bytes != nullptr && Zyl2Wvf::Checksum(0, bytes, length) == checksum;
    return isSound ? bytes : nullptr;
}

unsigned char const* KeptValues::read(BlockOfRun const& block, std::uint64_t from,
                                      std::uint64_t length)
{
    if (block.saved) {
        std::uint32_t const all = block.saved->contentLength;
        if (from > all || length > all - from)
            return nullptr;
        if (inflated_ != block.position && !inflate(block))
            return nullptr;
        return content_.GetData() + from;
    }
    inflated_.reset();
    int const file = folder_.OpenFile("block-" + std::to_string(block.number), O_RDONLY);
    if (file < 0)
        return nullptr;
    bool isRead = hasBytes(file, from, length);
    if (isRead) {
        content_.Grow(length);
        isRead = content_.GetSize() >= length && readAt(file, from, content_.GetData(), length);
    }
    ::close(file);
    return isRead ? content_.GetData() : nullptr;
}

/// \return whether the block's content is what the log says of it
bool KeptValues::inflate(BlockOfRun const& block)
{
    Saved const& saved = *block.saved;
    inflated_.reset();
    if (saved.size < lengthPrefix || !hasBytes(modelFile_, saved.offset, saved.size))
        return false;
    grow(stream_, saved.size);
    grow(content_, saved.contentLength);
    if (!readAt(modelFile_, saved.offset, stream_.GetData(), saved.size))
        return false;
    std::uint32_t length = 0;
    std::memcpy(&length, stream_.GetData(), lengthPrefix);
    uLongf inflated = saved.contentLength;
    uLong const streamLength = saved.size - lengthPrefix;
    uLong taken = streamLength;
    bool const isWhole = length == saved.contentLength &&
                         uncompress2(content_.GetData(), &inflated,
                                     stream_.GetData() + lengthPrefix, &taken) == Z_OK &&
                         inflated == length && taken == streamLength;
    if (isWhole)
        inflated_ = block.position;
    return isWhole;
}

std::size_t KeptValues::Copy(std::size_t slot, std::uint32_t length, Zyl2Util::Buffer& stream)
{
    auto const position = slots_.find(slot);
    auto const block = position == slots_.end() ? blocks_.end() : blocks_.find(position->second);
    if (block == blocks_.end() || block->second.slot != slot || !block->second.saved)
        return 0;
    Saved const& saved = *block->second.saved;
    bool const isCopied = saved.contentLength == length && saved.size <= stream.GetSize() &&
                          readAt(modelFile_, saved.offset, stream.GetData(), saved.size);
    return isCopied ? saved.size : 0;
}

} // namespace Recovery
} // namespace Mox2
} // namespace Zyl2
