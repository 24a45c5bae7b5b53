#include "Zyl2/Mox/ResultAttributes.h"

#include "container/Bytes.h"
#include "support/Encoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using Support::Content;
using Support::Count;
using Zyl2Mox::ResultAttributes;

/// 96 bytes: first, first + 1, ...
ResultAttributes Numbered(unsigned int first)
{
    ResultAttributes attributes;
    for (std::size_t byte = 0; byte < attributes.bytes.size(); ++byte)
        attributes.bytes[byte] = static_cast<std::uint8_t>(first + byte);
    return attributes;
}

std::string NumberedBytes(unsigned int first)
{
    std::string bytes;
    for (unsigned int byte = 0; byte < 96; ++byte)
        bytes.push_back(static_cast<char>(first + byte));
    return bytes;
}

TEST(ResultAttributes, EachStandsInTheListAs96BytesAsTheyAre)
{
    Zyl2Wvf::Block block;
    std::vector<ResultAttributes> const list{Numbered(0), Numbered(150)};
    Zyl2Mox::CopyToBlock(block, list);
    EXPECT_EQ(Content(block), Count(2) + NumberedBytes(0) + NumberedBytes(150));
    EXPECT_EQ(Zyl2Mox::EncodedSize(list), 196U);
}

} // namespace
