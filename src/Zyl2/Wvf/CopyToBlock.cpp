// Index entry, 139 bytes:
//
//     offset  0   id, 1
//             1   width of the name field, 4: always 128
//             5   name, 128: zero-padded; a longer one is cut and has no terminator
//           133   size, 4
//           137   transformations, 1
//           138   reserved, 1: 0

#include "Zyl2/Wvf/CopyToBlock.h"

#include "Zyl2/Exception/Raise.h"

#include <array>
#include <cstring>

namespace Zyl2Wvf {

namespace {

using Entry = std::array<char, IndexItem::EntryLength>;

Entry EncodedEntry(IndexItem const& item)
{
    Entry entry{};
    std::uint32_t const nameLength = IndexItem::NameLength;
    entry[0] = static_cast<char>(item.id);
    std::memcpy(&entry[1], &nameLength, sizeof nameLength);
    std::memcpy(&entry[5], item.name.c_str(), strnlen(item.name.c_str(), nameLength));
    std::memcpy(&entry[133], &item.size, sizeof item.size);
    entry[137] = static_cast<char>(item.transformations);
    entry[138] = static_cast<char>(item.reserved);
    return entry;
}

} // namespace

std::uint32_t EncodedCount(std::size_t count)
{
    if (count > Block::MaximumLength)
        Zyl2::Exception::raise(Zyl2::Exception::Sites::CopyToBlock::CountTooLarge);
    return static_cast<std::uint32_t>(count);
}

std::uint64_t EncodedSize(std::string const& text)
{
    return sizeof(std::uint32_t) + std::uint64_t(text.size());
}

void CopyToBlock(Block& block, std::string const& text)
{
    CopyToBlock(block, EncodedCount(text.size()));
    if (!text.empty())
        block.Append(text.data(), text.size());
}

std::uint64_t EncodedSize(std::vector<std::string> const& texts)
{
    std::uint64_t size = sizeof(std::uint32_t);
    for (std::string const& text : texts)
        size += EncodedSize(text);
    return size;
}

void CopyToBlock(Block& block, std::vector<std::string> const& texts)
{
    CopyToBlock(block, EncodedCount(texts.size()));
    for (std::string const& text : texts)
        CopyToBlock(block, text);
}

void CopyToBlock(Block& block, std::vector<IndexItem> const& items)
{
    CopyToBlock(block, items.data(), items.data() + items.size());
}

void CopyToBlock(Block& block, IndexItem const* first, IndexItem const* last)
{
    CopyToBlock(block, EncodedCount(static_cast<std::size_t>(last - first)));
    for (; first != last; ++first) {
        Entry const entry = EncodedEntry(*first);
        block.Append(entry.data(), entry.size());
    }
}

} // namespace Zyl2Wvf
