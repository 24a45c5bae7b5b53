#include "Zyl2/Wvf/BlockZlibCompressor.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Util/Buffer.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockStream.h"

#include <utility>

namespace Zyl2Wvf {

namespace {

namespace BlockZlibCompressorSites = Zyl2::Exception::Sites::BlockZlibCompressor;
using Zyl2::Exception::raise;

} // namespace

void BlockZlibCompressor::operator()(Block& block)
{
    std::uint32_t const length = block.GetLength();
    Zyl2Util::Buffer buffer = BufferFor(length, spares_);
    auto const written =
        MakeBlockStream(block.GetData(), length, buffer.GetData(), encoder_, level_);
    if (!written) {
        block.Reset();
        return;
    }
    CheckLength(*written);
    Replace(block, std::move(buffer), static_cast<std::uint32_t>(*written));
}

Zyl2Util::Buffer BlockZlibCompressor::BufferFor(std::uint32_t length, SpareBuffers* spares)
{
    Zyl2Util::Buffer buffer;
    if (spares != nullptr)
        buffer = spares->stream.Take();
    if (!buffer.Grow(BlockStreamCapacity(length)))
        raise(BlockZlibCompressorSites::NoMemory);
    buffer.PreferHugePages();
    return buffer;
}

void BlockZlibCompressor::CheckLength(std::size_t written)
{
    if (written > Block::MaximumLength)
        raise(BlockZlibCompressorSites::TooLong);
}

void BlockZlibCompressor::Replace(Block& block, Zyl2Util::Buffer stream, std::uint32_t length)
{
    Zyl2Util::Buffer content = block.Release();
    if (spares_ != nullptr)
        spares_->LeaveContent(std::move(content));
    block.Adopt(std::move(stream), length);
}

} // namespace Zyl2Wvf
