#ifndef ZYL2_WVF_SPAREBUFFERS_H
#define ZYL2_WVF_SPAREBUFFERS_H

#include "Zyl2/Util/Buffer.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace Zyl2Wvf {

/// Buffers that wait to be used again.
class BufferStock
{
public:
    /// Lets `count` buffers wait; without this call it is one.
    void Reserve(std::size_t count) { others_.reserve(count - 1); }

    /// The one that was left last; an empty one when there is none.
    Zyl2Util::Buffer Take() noexcept
    {
        Zyl2Util::Buffer taken = std::move(last_);
        if (!others_.empty()) {
            last_ = std::move(others_.back());
            others_.pop_back();
        }
        return taken;
    }

    /// Where too many wait, one of them is released.
    void Leave(Zyl2Util::Buffer buffer) noexcept
    {
        if (last_.GetSize() != 0 && others_.size() < others_.capacity())
            others_.push_back(std::move(last_));
        last_ = std::move(buffer);
    }

private:
    Zyl2Util::Buffer last_;
    std::vector<Zyl2Util::Buffer> others_;
};

/// What compressed and saved blocks leave to those that follow: a long run of blocks then takes its
/// memory from the system once. The first touch of a page may cost as much as compressing it.
struct SpareBuffers
{
    /// Leaves the buffer of a block's content, if it is a large one and not somebody else's.
    void LeaveContent(Zyl2Util::Buffer buffer) noexcept
    {
        if (buffer.GetSize() >= Zyl2Util::Buffer::LargeSize && !buffer.IsBorrowed())
            content.Leave(std::move(buffer));
    }

    /// Buffers that are large enough for the content of a full block.
    BufferStock content;
    /// Buffers for what compression makes of a block.
    BufferStock stream;
};

} // namespace Zyl2Wvf

#endif
