// A compressed block is given to the inflater as it lies in the file:
//
//   0   4         length of the content
//   4   size - 4  the stream

#include "moxread/BlockLoader.h"

#include "moxread/BlockReader.h"
#include "moxread/FormatError.h"

#include <algorithm>

namespace MoxRead {

namespace {

constexpr std::size_t alwaysCredible = std::size_t{1} << 20U;
constexpr std::size_t credibleExpansion = 16;

// Whether memory for the stated length may be had at once. Values hardly ever expand further than
// that; a block that says so, and is short, may be a lie.
bool isCredible(std::size_t length, Slot const& slot)
{
    return length <= std::max(alwaysCredible, credibleExpansion * slot.size);
}

void readAll(BlockReader& reader, std::size_t firstChunk, Buffer& content)
{
    std::size_t const length = reader.length();
    std::size_t used = 0;
    std::size_t chunk = firstChunk;
    content.reset(0);
    do {
        content.resize(std::min(length, used + chunk));
        used += reader.read(content.data() + used, content.size() - used);
        chunk = used;
    } while (used < length);
}

} // namespace

BlockLoader::BlockLoader(InputFile const& file, WholeInflater inflater) noexcept
    : file_(&file), inflater_(inflater)
{}

void BlockLoader::load(Slot const& slot, Buffer& content)
{
    BlockReader reader(*file_, slot);
    bool const isLengthCredible = isCredible(reader.length(), slot);
    if (isLengthCredible && inflateAtOnce(slot, reader.length(), content))
        return;
    readAll(reader, isLengthCredible ? reader.length() : alwaysCredible, content);
}

// Returns false, too, for what is not compressed or has nothing to inflate to.
bool BlockLoader::inflateAtOnce(Slot const& slot, std::size_t length, Buffer& content)
{
    if (!slot.isCompressed() || length == 0)
        return false;
    stream_.reset(slot.size - BlockReader::lengthSize);
    inContext([&] { return slot.describe(); },
              [&] {
                  file_->read(slot.position + BlockReader::lengthSize, stream_.data(),
                              stream_.size());
              });
    content.reset(length);
    return inflater_(stream_.data(), stream_.size(), content.data(), length);
}

} // namespace MoxRead
