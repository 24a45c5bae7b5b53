#ifndef MOXREAD_BLOCKREADER_H
#define MOXREAD_BLOCKREADER_H

#include "moxread/Export.h"
#include "moxread/InputFile.h"
#include "moxread/Slot.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

struct z_stream_s;

namespace MoxRead {

/// Reads the content of one block from front to end, inflating it on the way when it is compressed.
/// Needs a small fixed amount of memory, whatever the block's size is.
class MOXREAD_EXPORT BlockReader
{
public:
    /// What a compressed block states of its content comes before the stream, in so many bytes.
    static constexpr std::uint32_t lengthSize = 4;

    BlockReader(InputFile const& file, Slot const& slot);
    ~BlockReader();
    BlockReader(BlockReader const&) = delete;
    BlockReader& operator=(BlockReader const&) = delete;

    /// The number of bytes of the content. For a compressed block it is what the block states; that
    /// it holds is known when the last byte was read.
    std::uint32_t length() const noexcept;

    /// Reads the next bytes, as many as wanted unless the block ends before. The read that reaches
    /// the end (of an empty block: the first one) also checks that the block ends where it should.
    std::size_t read(std::uint8_t* to, std::size_t wanted);

    /// The rest of the content. Memory grows with what is really there, not with what is stated.
    std::vector<std::uint8_t> readAll();

private:
    struct StreamDeleter
    {
        void operator()(z_stream_s* stream) const;
    };

    std::uint32_t readStatedLength() const;
    void startInflating();
    void inflateExactly(std::uint8_t* to, std::size_t count);
    bool inflateOnce();
    void refill();
    void checkStreamEnd();

    InputFile const& file_;
    Slot slot_;
    std::uint32_t length_ = 0;
    std::uint32_t done_ = 0;
    std::unique_ptr<z_stream_s, StreamDeleter> stream_;
    std::vector<std::uint8_t> input_;
    std::uint64_t inputPosition_ = 0;
    bool streamEnded_ = false;
};

} // namespace MoxRead

#endif
