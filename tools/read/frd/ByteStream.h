#ifndef READ_FRD_BYTESTREAM_H
#define READ_FRD_BYTESTREAM_H

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace Frd {

/// The bytes of a result file, taken from front to back, as lines and as binary records by turns,
/// with the place reached for messages.
class ByteStream
{
public:
    /// Opens the file; throws `Error` when the system refuses or when it is no regular file.
    explicit ByteStream(std::filesystem::path const& path);

    /// Whether these bytes come next; takes nothing, and serves at the start of the file only.
    bool startsWith(std::string const& bytes);

    /// Takes the next line without its end; false at the end of the file. A line that is cut off,
    /// overlong, or that holds control characters is refused.
    bool readLine(std::string& line);

    /// Takes the next line, which `where` ("the node block") needs.
    void requireLine(std::string& line, std::string const& where);

    /// Makes sure that `count` records of `size` bytes are there, before anybody makes room for
    /// them.
    void requireRecords(std::uint64_t count, std::uint64_t size, std::string const& where) const;

    /// The next `size` bytes, or as many as are left; takes nothing.
    std::string peek(std::size_t size);

    /// Takes `size` bytes; the pointer holds until the next call.
    char const* readRecord(std::size_t size, std::string const& where);

    /// Bytes of the file.
    std::uint64_t size() const { return size_; }

    /// How many bytes are left.
    std::uint64_t remaining() const { return size_ - offset_; }

    /// Throws an `Error` that begins with the place of the line or record taken last: the line's
    /// number, or, once binary records went by and lines can't be counted, the offset in bytes.
    [[noreturn]] void fail(std::string const& message) const;

    /// As `fail`, for a file that ends too early: throws `Truncated`.
    [[noreturn]] void failAtEnd(std::string const& message) const;

    /// Notes what is wrong but does no harm. The same message is noted once.
    void warn(std::string const& message);

    /// A message with the place of the line or record taken last in front of it.
    std::string withPlace(std::string const& message) const;

    /// The messages that `warn` has noted, in the order in which they came up.
    std::vector<std::string> const& warnings() const { return warnings_; }

private:
    bool takeUntilNewline(std::string& line);

    std::ifstream stream_;
    std::vector<char> record_;
    std::vector<std::string> warnings_;
    std::uint64_t size_ = 0;
    std::uint64_t offset_ = 0;
    std::uint64_t start_ = 0;
    std::uint64_t lineNumber_ = 0;
    bool hasBinary_ = false;
};

} // namespace Frd

#endif
