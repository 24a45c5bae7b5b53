// Attribute list: six vectors. Each is a uint32 count, then the elements.
//
//   names     strings, in strictly ascending order
//   tags      bytes, one for each name: 0 uint32, 1 float, 2 string, 3 double
//   uint32s   the values of the attributes with tag 0, in the order of the names
//   floats    the values of the attributes with tag 1
//   doubles   the values of the attributes with tag 3
//   strings   the values of the attributes with tag 2

#include "moxread/Attributes.h"

#include "moxread/FormatError.h"
#include "moxread/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace MoxRead {

namespace {

constexpr std::uint8_t uint32Tag = 0;
constexpr std::uint8_t floatTag = 1;
constexpr std::uint8_t stringTag = 2;
constexpr std::uint8_t doubleTag = 3;
constexpr std::size_t leastStringSize = 4;

struct AttributeHeads
{
    std::vector<std::string> names;
    std::vector<std::uint8_t> tags;
};

std::vector<std::string> readNames(KeyStream& stream)
{
    std::uint32_t const count = stream.readCount(leastStringSize, "attribute count");
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint64_t const start = stream.position();
        names.push_back(stream.readString());
        if (i > 0 && !(names[i - 1] < names[i])) {
            throw FormatError(stream.placeOf(start) + ": attribute " + quoted(names[i]) +
                              " does not come after " + quoted(names[i - 1]) + " in order");
        }
    }
    return names;
}

std::uint8_t readTag(KeyStream& stream)
{
    std::uint64_t const start = stream.position();
    std::uint8_t const tag = stream.readByte();
    if (tag > doubleTag) {
        throw FormatError(stream.placeOf(start) + ": attribute type tag " + std::to_string(tag) +
                          " is not 0 to 3");
    }
    return tag;
}

void requireCount(KeyStream& stream, std::size_t expected, std::string const& what)
{
    std::uint64_t const start = stream.position();
    std::uint32_t const count = stream.readUint32();
    if (count != expected) {
        throw FormatError(stream.placeOf(start) + ": count of the " + what + " is " +
                          std::to_string(count) + ", not " + std::to_string(expected));
    }
}

std::vector<std::uint8_t> readTags(KeyStream& stream, std::size_t count)
{
    requireCount(stream, count, "attribute type tags");
    std::vector<std::uint8_t> tags;
    for (std::size_t i = 0; i < count; ++i)
        tags.push_back(readTag(stream));
    return tags;
}

template <typename Read>
void readValues(KeyStream& stream, AttributeHeads const& heads, std::uint8_t tag,
                std::string const& what, Attributes& attributes, Read const& read)
{
    auto const expected = std::count(heads.tags.begin(), heads.tags.end(), tag);
    requireCount(stream, static_cast<std::size_t>(expected), what);
    for (std::size_t i = 0; i < heads.tags.size(); ++i)
        if (heads.tags[i] == tag)
            attributes.emplace(heads.names[i], read());
}

} // namespace

Attributes readAttributes(KeyStream& stream)
{
    AttributeHeads heads;
    heads.names = readNames(stream);
    heads.tags = readTags(stream, heads.names.size());
    Attributes attributes;
    readValues(stream, heads, uint32Tag, "uint32 attributes", attributes,
               [&] { return stream.readUint32(); });
    readValues(stream, heads, floatTag, "float attributes", attributes,
               [&] { return stream.readFloat(); });
    readValues(stream, heads, doubleTag, "double attributes", attributes,
               [&] { return stream.readDouble(); });
    readValues(stream, heads, stringTag, "string attributes", attributes,
               [&] { return stream.readString(); });
    return attributes;
}

} // namespace MoxRead
