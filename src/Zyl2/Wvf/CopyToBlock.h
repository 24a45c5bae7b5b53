#ifndef ZYL2_WVF_COPYTOBLOCK_H
#define ZYL2_WVF_COPYTOBLOCK_H

#include "Zyl2/Wvf/Block.h"
#include "Zyl2/Wvf/IndexItem.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

// How values look in a block. Little-endian, without tag, alignment or padding:
//
//     scalar             | its own bytes |
//     string             | length, 4 | characters |            no terminator
//     vector of scalars  | count, 4 | values |
//     vector of strings  | count, 4 | strings |
//     index entries      | count, 4 | entries of 139 bytes |   see the source
//
// Each CopyToBlock appends at the block's cursor; EncodedSize gives the bytes it will append.
// Values of a type for which both functions exist can be put under a key of the index.

namespace Zyl2Wvf {

/// Number of elements as it stands before them.
/// \throws MemoryAllocationException more than 32 bits can count
std::uint32_t EncodedCount(std::size_t count);

template <typename T>
std::enable_if_t<std::is_arithmetic_v<T>, std::uint64_t> EncodedSize(T const& /*value*/)
{
    return sizeof(T);
}

template <typename T>
std::enable_if_t<std::is_arithmetic_v<T>> CopyToBlock(Block& block, T const& value)
{
    block.Append(&value, sizeof value);
}

std::uint64_t EncodedSize(std::string const& text);
void CopyToBlock(Block& block, std::string const& text);

template <typename T>
std::enable_if_t<std::is_arithmetic_v<T>, std::uint64_t> EncodedSize(std::vector<T> const& values)
{
    return sizeof(std::uint32_t) + std::uint64_t(values.size()) * sizeof(T);
}

template <typename T>
std::enable_if_t<std::is_arithmetic_v<T>> CopyToBlock(Block& block, std::vector<T> const& values)
{
    static_assert(!std::is_same_v<T, bool>, "vector<bool> has no bytes to copy");
    CopyToBlock(block, EncodedCount(values.size()));
    block.Append(values.data(), values.size() * sizeof(T));
}

std::uint64_t EncodedSize(std::vector<std::string> const& texts);
void CopyToBlock(Block& block, std::vector<std::string> const& texts);

void CopyToBlock(Block& block, std::vector<IndexItem> const& items);

/// The same encoding for the items `first` up to, but without, `last`.
void CopyToBlock(Block& block, IndexItem const* first, IndexItem const* last);

} // namespace Zyl2Wvf

#endif
