// The streams, each a sequence of values as in Bytes.cpp:
//
//   Mox Tree            u32 count; for each node 6 u32 ids, texts name, type, version, u64 position
//   Light Data          group: 10 f32, u8; geometry: u32 count and the variable headers
//   Attributes          for each list: names, tags, uint32s, floats, doubles, strings
//   Resources           u32 size, text version, 18 f32, u8
//   Global Information  u32 count, u32 size, text version, 7 texts, u32 count of result attributes

#include "Sample.h"

#include "Bytes.h"

namespace MoxReadTest {

namespace {

std::string bytesOf(TestGroup const& group)
{
    Bytes bytes;
    for (float const value : group.transform)
        bytes.f32(value);
    return bytes.u8(group.flag).str();
}

std::string bytesOf(TestVariable const& variable)
{
    Bytes bytes;
    bytes.text(variable.name).u32(variable.type | variable.elementCode << 24U).u8(variable.linked);
    if (variable.linked != 0) {
        bytes.u32(variable.linkNode).u32(variable.linkIndex);
    } else {
        bytes.u32(variable.count).u8(variable.width).u8(variable.flag1).u8(variable.flag2);
        bytes.u32(variable.float1).u32(variable.float2).u8(variable.flag3).u64(variable.position);
    }
    return bytes.u8(variable.vibration).str();
}

TestNode node(std::vector<std::uint32_t> ids, std::string const& name, std::string const& type,
              std::string const& version, std::uint64_t lightPosition)
{
    return {ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], name, type, version, lightPosition};
}

} // namespace

Sample::Sample()
{
    nodes = {node({1, 0, 0, 0, 2, 4}, "root", "Group", "0.4", 0),
             node({2, 1, 0, 4, 3, 3}, "part", "Shape", "0.2", 41),
             node({3, 2, 0, 0, 0, 0}, "part", "Geometry", "0.7", 41),
             node({4, 1, 2, 0, 0, 0}, "rest", "Group", "0.4", 159)};
    root.transform = {1, 2, 3, 0, 1, 0, 0.5F, 2, 2, 2};
    root.flag = 1;

    TestVariable coordinates;
    coordinates.name = "Coordinates";
    coordinates.type = 1;
    coordinates.elementCode = 1;
    coordinates.count = 6;
    coordinates.width = 3;
    coordinates.vibration = 1;
    TestVariable ids;
    ids.name = "Ids";
    ids.type = 12;
    ids.elementCode = 5;
    ids.count = 2;
    ids.width = 1;
    ids.position = 24;
    TestVariable link;
    link.name = "Coordinates\x1Et2";
    link.type = 1;
    link.elementCode = 1;
    link.linked = 1;
    link.linkNode = 3;
    link.linkIndex = 0;
    variables = {coordinates, ids, link};

    attributes.resize(5);
    attributes[0] = {{"a", "b", "c", "d"}, {0, 1, 2, 3}, {7}, {1.5F}, {2.5}, {"text"}};
    attributes[1] = {{"t"}, {1}, {}, {0.5F}, {}, {}};
}

std::string Sample::tree() const
{
    Bytes bytes;
    bytes.u32(nodes.size());
    for (TestNode const& entry : nodes) {
        bytes.u32(entry.id).u32(entry.parent).u32(entry.previous).u32(entry.next);
        bytes.u32(entry.first).u32(entry.last);
        bytes.text(entry.name).text(entry.type).text(entry.version).u64(entry.lightPosition);
    }
    return bytes.str();
}

std::string Sample::light() const
{
    Bytes bytes;
    bytes.raw(bytesOf(root)).u32(variables.size());
    for (TestVariable const& variable : variables)
        bytes.raw(bytesOf(variable));
    if (hasRest && nodes[3].type == "Geometry")
        bytes.u32(0);
    else if (hasRest)
        bytes.raw(bytesOf(rest));
    return bytes.str();
}

std::string Sample::attributeBytes() const
{
    Bytes bytes;
    for (TestAttributes const& list : attributes)
        bytes.raw(MoxReadTest::bytesOf(list));
    return bytes.str();
}

std::string Sample::resources() const
{
    Bytes bytes;
    bytes.u32(material.size).text(material.version);
    for (float const value : {0.8F, 0.8F, 0.8F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.16F,
                              0.16F, 0.16F, 0.2F, 0.F, 0.2F})
        bytes.f32(value);
    return bytes.u8(material.flag).str();
}

std::string Sample::global() const
{
    return Bytes()
        .u32(1)
        .u32(writing.size)
        .text(writing.version)
        .text("one")
        .text("two")
        .text(writing.formatVersion)
        .text("Thu Nov 20 15:30:00 2025 UTC")
        .text("host")
        .text("me")
        .text("")
        .u32(0)
        .str();
}

// Rows (1, 2, 3) and (-1, 0.5, NaN), then 0x04030201 and 0x14131211.
std::string Sample::heavy() const
{
    return {"\x00\x00\x00\x00\x80\x80\x3F\xBF"
            "\x00\x00\x00\x00\x00\x00\x40\x3F"
            "\x00\x00\x00\x00\x40\xC0\x40\x7F"
            "\x01\x11\x02\x12\x03\x13\x04\x14",
            32};
}

std::vector<TestBlock> Sample::blocks() const
{
    std::vector<TestBlock> result = plainBlocks();
    for (TestBlock& block : result) {
        block.transformations = 1;
        block.block = deflated(block.block);
    }
    return result;
}

std::vector<TestBlock> Sample::plainBlocks() const
{
    return {{"Heavy Data", 0, heavy()},    {"Mox Tree", 0, tree()},
            {"Light Data", 0, light()},    {"Attributes", 0, attributeBytes()},
            {"Resources", 0, resources()}, {"Global Information", 0, global()}};
}

std::string Sample::file() const
{
    return assemble(slotsFor(blocks()));
}

std::string bytesOf(TestAttributes const& attributes)
{
    Bytes bytes;
    bytes.u32(attributes.names.size());
    for (std::string const& name : attributes.names)
        bytes.text(name);
    bytes.u32(attributes.tags.size());
    for (unsigned const tag : attributes.tags)
        bytes.u8(tag);
    bytes.u32(attributes.uint32s.size());
    for (std::uint32_t const value : attributes.uint32s)
        bytes.u32(value);
    bytes.u32(attributes.floats.size());
    for (float const value : attributes.floats)
        bytes.f32(value);
    bytes.u32(attributes.doubles.size());
    for (double const value : attributes.doubles)
        bytes.f64(value);
    bytes.u32(attributes.strings.size());
    for (std::string const& value : attributes.strings)
        bytes.text(value);
    return bytes.str();
}

std::string minimalFile()
{
    Sample const sample;
    TestNode root = sample.nodes[0];
    root.first = 0;
    root.last = 0;
    Sample only;
    only.nodes = {root};
    return assemble(slotsFor({{"Mox Tree", 1, deflated(only.tree())},
                              {"Light Data", 1, deflated(sample.light().substr(0, 41))},
                              {"Attributes", 1, deflated(bytesOf(TestAttributes()))},
                              {"Global Information", 1, deflated(sample.global())}}));
}

} // namespace MoxReadTest
