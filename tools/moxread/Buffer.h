#ifndef MOXREAD_BUFFER_H
#define MOXREAD_BUFFER_H

#include "moxread/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace MoxRead {

/// Bytes that are not set to anything before they are written, in memory that is used again.
class MOXREAD_EXPORT Buffer
{
public:
    Buffer() = default;
    Buffer(Buffer&& other) noexcept { swap(other); }
    Buffer& operator=(Buffer&& other) noexcept;
    ~Buffer() = default;
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;

    std::uint8_t* data() noexcept { return bytes_.get(); }
    std::uint8_t const* data() const noexcept { return bytes_.get(); }
    std::size_t size() const noexcept { return size_; }

    /// Makes room for `size` bytes; what the buffer held is lost.
    void reset(std::size_t size);

    /// Changes the size; the bytes that the buffer holds stay, as far as they have room.
    void resize(std::size_t size);

    void swap(Buffer& other) noexcept;

private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace MoxRead

#endif
