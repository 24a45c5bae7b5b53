#ifndef TESTS_SUPPORT_FOLDER_H
#define TESTS_SUPPORT_FOLDER_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <stdlib.h>

namespace Support {

/// A folder of its own for each test, gone when the test is over.
class Folder
{
public:
    Folder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "mox-test-XXXXXX").string();
        if (::mkdtemp(&name[0]) == nullptr)
            throw std::runtime_error("no folder for the test");
        path_ = name;
    }

    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;

    std::filesystem::path path(std::string const& name) const { return path_ / name; }

    /// Makes a file of that content.
    std::filesystem::path write(std::string const& name, std::string const& content) const
    {
        std::ofstream file(path(name), std::ios::binary);
        file << content;
        if (!file.flush())
            throw std::runtime_error("the test's file can't be written");
        return path(name);
    }

    /// Names of the files in the folder, sorted.
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path path_;
};

inline std::string contentOf(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("no file " + path.string());
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace Support

#endif
