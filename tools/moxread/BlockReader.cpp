// Block without the transformation 1: its content as it is, `size` bytes.
//
// Block with the transformation 1:
//
//   0   4         length of the content
//   4   size - 4  exactly one zlib stream, which inflates to exactly that length

#include "moxread/BlockReader.h"

#include "moxread/FormatError.h"
#include "moxread/LittleEndian.h"

#include <zlib.h>

#include <algorithm>
#include <array>

namespace MoxRead {

namespace {

constexpr std::size_t inputChunk = std::size_t{1} << 16U;
constexpr std::size_t firstOutputChunk = std::size_t{1} << 20U;

// No deflate stream expands further: a match of 258 bytes takes two bits at least.
constexpr std::uint64_t greatestExpansion = 1032;

std::string reasonOf(z_stream const& stream)
{
    return stream.msg != nullptr ? std::string(" (") + stream.msg + ")" : std::string();
}

} // namespace

void BlockReader::StreamDeleter::operator()(z_stream_s* stream) const
{
    ::inflateEnd(stream);
    std::unique_ptr<z_stream_s> const owner(stream);
}

BlockReader::BlockReader(InputFile const& file, Slot const& slot) : file_(file), slot_(slot)
{
    length_ = inContext([&] { return slot_.describe(); }, [&] { return readStatedLength(); });
}

BlockReader::~BlockReader() = default;

std::uint32_t BlockReader::length() const noexcept
{
    return length_;
}

std::uint32_t BlockReader::readStatedLength() const
{
    if (!slot_.isCompressed())
        return slot_.size;
    if (slot_.size < lengthSize) {
        throw FormatError("a compressed block of " + std::to_string(slot_.size) +
                          " bytes has no room for its length");
    }
    std::array<std::uint8_t, lengthSize> bytes = {};
    file_.read(slot_.position, bytes.data(), bytes.size());
    std::uint32_t const length = decodeUint32(bytes.data());
    if (length > (slot_.size - lengthSize) * greatestExpansion) {
        throw FormatError(std::to_string(slot_.size - lengthSize) +
                          " compressed bytes cannot hold the stated " + std::to_string(length) +
                          " bytes");
    }
    return length;
}

std::size_t BlockReader::read(std::uint8_t* to, std::size_t wanted)
{
    std::size_t const count = std::min<std::size_t>(wanted, length_ - done_);
    if (!slot_.isCompressed()) {
        file_.read(slot_.position + done_, to, count);
        done_ += static_cast<std::uint32_t>(count);
        return count;
    }
    inContext([&] { return slot_.describe(); }, [&] { inflateExactly(to, count); });
    return count;
}

std::vector<std::uint8_t> BlockReader::readAll()
{
    std::vector<std::uint8_t> result;
    std::size_t used = 0;
    std::size_t chunk = firstOutputChunk;
    do {
        result.resize(std::min<std::size_t>(used + chunk, used + (length_ - done_)));
        used += read(result.data() + used, result.size() - used);
        chunk = used;
    } while (done_ < length_);
    return result;
}

void BlockReader::startInflating()
{
    auto stream = std::make_unique<z_stream_s>();
    if (::inflateInit(stream.get()) != Z_OK)
        throw FormatError("zlib cannot be started");
    stream_.reset(stream.release());
    input_.resize(std::min<std::size_t>(inputChunk, slot_.size - lengthSize));
    inputPosition_ = slot_.position + lengthSize;
}

void BlockReader::inflateExactly(std::uint8_t* to, std::size_t count)
{
    if (stream_ == nullptr)
        startInflating();
    stream_->next_out = to;
    stream_->avail_out = static_cast<uInt>(count);
    while (stream_->avail_out > 0) {
        if (inflateOnce() && stream_->avail_out > 0) {
            throw FormatError("the zlib stream inflates to " +
                              std::to_string(done_ + count - stream_->avail_out) +
                              " bytes, not to the stated " + std::to_string(length_));
        }
    }
    done_ += static_cast<std::uint32_t>(count);
    if (done_ == length_)
        checkStreamEnd();
}

// Returns whether the stream has ended. Without input it may still have output to give; only when
// that is used up, too, does zlib report that it cannot go on.
bool BlockReader::inflateOnce()
{
    if (stream_->avail_in == 0)
        refill();
    int const result = ::inflate(stream_.get(), Z_NO_FLUSH);
    if (result == Z_BUF_ERROR)
        throw FormatError("the zlib stream ends early");
    if (result != Z_OK && result != Z_STREAM_END)
        throw FormatError("the zlib stream is damaged" + reasonOf(*stream_));
    streamEnded_ = result == Z_STREAM_END;
    return streamEnded_;
}

void BlockReader::refill()
{
    auto const count =
        static_cast<std::size_t>(std::min<std::uint64_t>(inputChunk, slot_.end() - inputPosition_));
    file_.read(inputPosition_, input_.data(), count);
    inputPosition_ += count;
    stream_->next_in = input_.data();
    stream_->avail_in = static_cast<uInt>(count);
}

void BlockReader::checkStreamEnd()
{
    std::uint8_t excess = 0;
    stream_->next_out = &excess;
    stream_->avail_out = 1;
    while (!streamEnded_ && stream_->avail_out > 0)
        inflateOnce();
    if (stream_->avail_out == 0) {
        throw FormatError("the zlib stream inflates to more than the stated " +
                          std::to_string(length_) + " bytes");
    }
    std::uint64_t const trailing = slot_.end() - inputPosition_ + stream_->avail_in;
    if (trailing > 0)
        throw FormatError(std::to_string(trailing) + " bytes follow the zlib stream");
}

} // namespace MoxRead
