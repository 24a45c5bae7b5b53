#ifndef MOX_FORMATS_FILEPROBE_H
#define MOX_FORMATS_FILEPROBE_H

#include <filesystem>
#include <string>

namespace Mox {

/// What tells the format of a file or folder: where it is and what it begins with.
class FileProbe
{
public:
    explicit FileProbe(std::filesystem::path path);

    std::filesystem::path const& path() const { return path_; }
    bool isFolder() const { return isFolder_; }

    bool startsWith(std::string const& bytes) const;
    /// Whether the text is in the first few kilobytes.
    bool mentions(std::string const& text) const;
    /// Whether one of the lines there is this one, whatever blanks are around it.
    bool hasLine(std::string const& line) const;
    /// Looks through the file, but for what is behind its first 64 MiB.
    bool contains(std::string const& bytes) const;

private:
    std::filesystem::path path_;
    bool isFolder_;
    std::string beginning_;
};

} // namespace Mox

#endif
