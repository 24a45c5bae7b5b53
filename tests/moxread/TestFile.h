#ifndef TESTS_MOXREAD_TESTFILE_H
#define TESTS_MOXREAD_TESTFILE_H

#include <cstdint>
#include <string>
#include <vector>

namespace MoxReadTest {

extern std::string const indexName;
extern std::string const spareName;

/// An index entry with its block, every field free to be wrong.
struct TestSlot
{
    unsigned id = 0;
    std::uint32_t nameWidth = 128;
    std::string name;
    std::uint32_t size = 0;
    unsigned transformations = 0;
    unsigned reserved = 0;
    std::string block;
};

/// A block to be put into a file, its content as it stands in the file.
struct TestBlock
{
    std::string name;
    unsigned transformations = 0;
    std::string block;
};

/// The content of a compressed block: the length, then a zlib stream.
std::string deflated(std::string const& content);

/// A file's slots: sound in all that the blocks do not bring along themselves.
std::vector<TestSlot> slotsFor(std::vector<TestBlock> const& blocks);

/// The bytes of the file. Where a slot is an index block without bytes, it gets those of the 200
/// slots that follow.
std::string assemble(std::vector<TestSlot> slots);

/// A file that is on disk for as long as the object lives.
class TemporaryFile
{
public:
    explicit TemporaryFile(std::string const& content);
    ~TemporaryFile();
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    std::string const& path() const;
    void write(std::string const& content) const;
    void overwrite(std::size_t offset, char byte) const;
    void cutTo(std::size_t length) const;

private:
    std::string path_;
};

} // namespace MoxReadTest

#endif
