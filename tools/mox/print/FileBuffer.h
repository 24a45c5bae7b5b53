#ifndef MOX_PRINT_FILEBUFFER_H
#define MOX_PRINT_FILEBUFFER_H

#include <streambuf>
#include <string>
#include <vector>

namespace Mox {

/// Writes what a stream is given into a file. Unlike the standard buffer, it remembers why a write
/// failed.
class FileBuffer : public std::streambuf
{
public:
    /// Opens an existing file for writing.
    explicit FileBuffer(std::string const& path);
    ~FileBuffer() override;
    FileBuffer(FileBuffer const&) = delete;
    FileBuffer& operator=(FileBuffer const&) = delete;

    /// Whether the system took all.
    bool close();

    /// The system's number of the first thing that went wrong, or 0.
    int error() const { return error_; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    bool writeOut();
    bool check(bool isGood);

    std::vector<char> piece_;
    int descriptor_;
    int error_ = 0;
};

} // namespace Mox

#endif
