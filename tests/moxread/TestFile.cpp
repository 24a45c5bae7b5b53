// File: 8 bytes signature, 4 bytes version, 4 bytes length (2784) and 4 bytes count (20) of the
// root index, 20 entries of 139 bytes, blocks.
//
// Entry: 1 id, 4 name width, 128 name, 4 size, 1 transformations, 1 reserved.

#include "TestFile.h"

#include "Bytes.h"

#include <zlib.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace MoxReadTest {

std::string const indexName = std::string(1, '\x0B') + "Index Block ";
std::string const spareName = std::string(1, '\x0B') + "Empty Block ";

namespace {

constexpr std::size_t rootCount = 20;
constexpr std::size_t groupCount = 200;

std::string entryBytes(TestSlot const& slot)
{
    std::string name = slot.name;
    name.resize(128, '\0');
    return Bytes()
        .u8(slot.id)
        .u32(slot.nameWidth)
        .raw(name)
        .u32(slot.size)
        .u8(slot.transformations)
        .u8(slot.reserved)
        .str();
}

void addSpares(std::vector<TestSlot>& slots, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        TestSlot slot;
        slot.id = static_cast<unsigned>((slots.size() + 1) % 256);
        slot.name = spareName;
        slots.push_back(slot);
    }
}

std::string entriesFrom(std::vector<TestSlot> const& slots, std::size_t first, std::size_t count)
{
    Bytes bytes;
    bytes.u32(count);
    for (std::size_t i = first; i < first + count; ++i)
        bytes.raw(entryBytes(slots.at(i)));
    return bytes.str();
}

} // namespace

std::string deflated(std::string const& content)
{
    uLongf size = compressBound(content.size());
    std::string stream(size, '\0');
    int const result = compress2(reinterpret_cast<Bytef*>(stream.data()), &size,
                                 reinterpret_cast<Bytef const*>(content.data()), content.size(), 6);
    if (result != Z_OK)
        throw std::runtime_error("compress2");
    stream.resize(size);
    return Bytes().u32(content.size()).raw(stream).str();
}

std::vector<TestSlot> slotsFor(std::vector<TestBlock> const& blocks)
{
    std::vector<TestSlot> slots;
    addSpares(slots, rootCount);
    std::size_t next = 0;
    for (TestBlock const& block : blocks) {
        if (next + 1 == slots.size()) {
            slots[next].name = indexName;
            slots[next].transformations = 32;
            slots[next].size = 27804;
            addSpares(slots, groupCount);
            ++next;
        }
        slots[next].name = block.name;
        slots[next].transformations = block.transformations;
        slots[next].size = static_cast<std::uint32_t>(block.block.size());
        slots[next].block = block.block;
        ++next;
    }
    return slots;
}

std::string assemble(std::vector<TestSlot> slots)
{
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (slots[i].name == indexName && slots[i].block.empty())
            slots[i].block = entriesFrom(slots, i + 1, groupCount);
    Bytes bytes;
    bytes.raw("\x89WVF\r\n\x1A\n").raw(std::string("1.3\0", 4));
    bytes.u32(2784).raw(entriesFrom(slots, 0, rootCount));
    for (TestSlot const& slot : slots)
        bytes.raw(slot.block);
    return bytes.str();
}

TemporaryFile::TemporaryFile(std::string const& content)
{
    static int number = 0;
    path_ = testing::TempDir() + "moxread_" + std::to_string(::getpid()) + "_" +
            std::to_string(++number) + ".mox";
    write(content);
}

TemporaryFile::~TemporaryFile()
{
    std::remove(path_.c_str());
}

std::string const& TemporaryFile::path() const
{
    return path_;
}

void TemporaryFile::write(std::string const& content) const
{
    std::ofstream out(path_, std::ios::binary | std::ios::trunc);
    out << content;
    if (!out.flush())
        throw std::runtime_error("cannot write " + path_);
}

void TemporaryFile::overwrite(std::size_t offset, char byte) const
{
    std::fstream out(path_, std::ios::binary | std::ios::in | std::ios::out);
    out.seekp(static_cast<std::streamoff>(offset));
    out.put(byte);
    if (!out.flush())
        throw std::runtime_error("cannot write " + path_);
}

void TemporaryFile::cutTo(std::size_t length) const
{
    std::filesystem::resize_file(path_, length);
}

} // namespace MoxReadTest
