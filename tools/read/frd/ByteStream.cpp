// A result file is a sequence of lines, each ended by 0A or 0D 0A, with runs of binary records
// between them. A run begins right behind the 0A of the line that announces it and ends after as
// many records as that line says; nothing marks its end:
//
//   "    2C   ...   2   ...   3" 0A        line: two nodes follow, in binary
//   01 00 00 00  x0..x7 y0..y7 z0..z7      record: number, coordinates
//   02 00 00 00  x0..x7 y0..y7 z0..z7
//   "    3C   ..."                         line again

#include "ByteStream.h"

#include "Error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Frd {

namespace {

// Far above the 103 characters of the longest record, and far below what would hurt.
constexpr std::size_t longestLine = 1000;

bool isControl(char c)
{
    auto const code = static_cast<unsigned char>(c);
    return (code < 0x20 && c != '\t') || code == 0x7F;
}

/// To be asked before opening: that would wait for ever for the writer of a named pipe.
bool isOtherThanRegularFile(std::filesystem::path const& path)
{
    std::error_code ignored;
    auto const status = std::filesystem::status(path, ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

} // namespace

ByteStream::ByteStream(std::filesystem::path const& path)
{
    if (isOtherThanRegularFile(path))
        throw Error("The file is not a regular file.");
    errno = 0;
    stream_.open(path, std::ios::binary);
    if (!stream_)
        throw Error(std::string("The file cannot be opened: ") + std::strerror(errno) + ".");
    size_ = std::filesystem::file_size(path);
}

bool ByteStream::startsWith(std::string const& bytes)
{
    std::string found(bytes.size(), '\0');
    auto const wanted = static_cast<std::streamsize>(bytes.size());
    bool const isThere = stream_.rdbuf()->sgetn(&found[0], wanted) == wanted && found == bytes;
    stream_.seekg(0);
    return isThere;
}

bool ByteStream::readLine(std::string& line)
{
    line.clear();
    start_ = offset_;
    if (remaining() == 0)
        return false;
    ++lineNumber_;
    if (!takeUntilNewline(line)) {
        if (line.size() > longestLine)
            fail("The line is overlong.");
        failAtEnd("The file ends in the middle of a line.");
    }
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (std::any_of(line.begin(), line.end(), isControl))
        fail("The line holds a control character.");
    return true;
}

bool ByteStream::takeUntilNewline(std::string& line)
{
    auto* const buffer = stream_.rdbuf();
    while (line.size() <= longestLine) {
        int const c = buffer->sbumpc();
        if (c == std::char_traits<char>::eof())
            return false;
        ++offset_;
        if (c == '\n')
            return true;
        line.push_back(static_cast<char>(c));
    }
    return false;
}

void ByteStream::requireLine(std::string& line, std::string const& where)
{
    if (!readLine(line))
        failAtEnd("The file ends in " + where + ".");
}

void ByteStream::requireRecords(std::uint64_t count, std::uint64_t size,
                                std::string const& where) const
{
    if (count > remaining() / size)
        failAtEnd("The file ends in " + where + ": " + std::to_string(count) + " records of " +
                  std::to_string(size) + " bytes do not fit in the " + std::to_string(remaining()) +
                  " bytes left.");
}

std::string ByteStream::peek(std::size_t size)
{
    std::string found(std::min<std::uint64_t>(size, remaining()), '\0');
    auto const wanted = static_cast<std::streamsize>(found.size());
    auto const taken = stream_.rdbuf()->sgetn(found.data(), wanted);
    found.resize(static_cast<std::size_t>(taken));
    stream_.rdbuf()->pubseekpos(static_cast<std::streamoff>(offset_), std::ios::in);
    return found;
}

char const* ByteStream::readRecord(std::size_t size, std::string const& where)
{
    hasBinary_ = true;
    start_ = offset_;
    record_.resize(size);
    auto const wanted = static_cast<std::streamsize>(size);
    if (stream_.rdbuf()->sgetn(record_.data(), wanted) != wanted)
        failAtEnd("The file ends in " + where + ".");
    offset_ += size;
    return record_.data();
}

void ByteStream::fail(std::string const& message) const
{
    throw Error(withPlace(message));
}

void ByteStream::failAtEnd(std::string const& message) const
{
    throw Truncated(withPlace(message));
}

void ByteStream::warn(std::string const& message)
{
    if (std::find(warnings_.begin(), warnings_.end(), message) == warnings_.end())
        warnings_.push_back(message);
}

std::string ByteStream::withPlace(std::string const& message) const
{
    std::string const place =
        hasBinary_ ? "byte " + std::to_string(start_) : "line " + std::to_string(lineNumber_);
    return place + ": " + message;
}

} // namespace Frd
