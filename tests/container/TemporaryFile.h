#ifndef TESTS_CONTAINER_TEMPORARYFILE_H
#define TESTS_CONTAINER_TEMPORARYFILE_H

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

namespace Support {

/// A folder of the test's own, removed with all that is in it.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "moxwriter-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        path_ = pattern;
    }

    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string File(std::string const& name) const { return path_ + '/' + name; }

private:
    std::string path_;
};

inline std::string ReadFile(std::string const& path)
{
    std::ifstream const stream(path, std::ios::binary);
    // Character by character takes long where nothing is optimised.
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

inline void WriteFile(std::string const& path, std::string const& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

struct CloseStream
{
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, CloseStream>;

inline Stream OpenStream(std::string const& path, char const* mode)
{
    Stream stream(std::fopen(path.c_str(), mode));
    if (stream == nullptr)
        throw std::runtime_error("can't open " + path);
    return stream;
}

} // namespace Support

#endif
