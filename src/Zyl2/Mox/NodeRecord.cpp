// One record of the tree's own block:
//
//     | id, 4 | parent, 4 | previous sibling, 4 | next sibling, 4 | first child, 4 | last child, 4
//     | | name, string | type, string | version, string | light position, 8; in older layouts 4 |
//
// A string is its length, 4, and its characters. There is 0 for no relative, and nothing in the
// strings of a record without a node. The light position is where the node's payload begins in
// "Light Data".

#include "Zyl2/Mox/NodeRecord.h"

#include "Zyl2/Mox/TargetVersion.h"

#include <cstring>

namespace Zyl2Mox {

namespace {

std::string const& Nothing()
{
    static std::string const text;
    return text;
}

unsigned char* Append(unsigned char* place, void const* bytes, std::size_t size)
{
    std::memcpy(place, bytes, size);
    return place + size;
}

unsigned char* Append(unsigned char* place, std::string const& text)
{
    auto const length = static_cast<std::uint32_t>(text.size());
    return Append(Append(place, &length, sizeof length), text.data(), text.size());
}

} // namespace

NodeRecord::NodeRecord(Zyl2Adt::TreeNode<Node*> const& record, std::uint64_t lightPosition)
    : ids_{record.id,          record.parent,     record.previousSibling,
           record.nextSibling, record.firstChild, record.lastChild},
      name_(record.value == nullptr ? Nothing() : record.value->GetName()),
      type_(record.value == nullptr ? Nothing() : record.value->GetType()),
      version_(record.value == nullptr ? Nothing() : record.value->GetVersion()),
      lightPosition_(lightPosition),
      positionSize_(IsOlderLayout() ? sizeof(std::uint32_t) : sizeof(std::uint64_t))
{}

std::size_t NodeRecord::GetSize() const
{
    return sizeof ids_ + 3 * sizeof(std::uint32_t) + name_.size() + type_.size() + version_.size() +
           positionSize_;
}

void NodeRecord::CopyTo(unsigned char* place) const
{
    place = Append(place, ids_.data(), sizeof ids_);
    for (std::string const* text : {&name_, &type_, &version_})
        place = Append(place, *text);
    // Little-endian: the low bytes come first.
    Append(place, &lightPosition_, positionSize_);
}

void NodeRecord::PutInto(Zyl2Wvf::Index& index, Zyl2Wvf::Index::Key& key) const
{
    for (std::uint32_t const id : ids_)
        index.Put<unsigned int>(key, id);
    for (std::string const* text : {&name_, &type_, &version_})
        index.Put(key, *text);
    if (positionSize_ == sizeof(std::uint32_t))
        index.Put<unsigned int>(key, static_cast<std::uint32_t>(lightPosition_));
    else
        index.Put<unsigned long>(key, lightPosition_);
}

} // namespace Zyl2Mox
