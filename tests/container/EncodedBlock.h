#ifndef TESTS_CONTAINER_ENCODEDBLOCK_H
#define TESTS_CONTAINER_ENCODEDBLOCK_H

#include "Bytes.h"
#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/BlockZlibCompressor.h"
#include "Zyl2/Wvf/FastDeflate.h"

#include <string>

namespace Support {

/// How a compressed block of that content looks: by hand for zlib; for an encoder that expresses it
/// in another way, as the compressor makes it, whose own tests inflate what it makes.
inline std::string EncodedBlock(std::string const& byZlib, std::string const& content)
{
    if (std::string(Zyl2Wvf::DeflateEncoderName()) == "zlib")
        return byZlib;
    Zyl2Wvf::Block block;
    block.Append(content.data(), content.size());
    Zyl2Wvf::BlockZlibCompressor compress(6);
    compress(block);
    return Content(block);
}

} // namespace Support

#endif
