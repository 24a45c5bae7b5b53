// Compares what two players have left: the logs word by word, the models byte by byte, but for the
// writing record, which tells of host and time.

#include "support/Folder.h"
#include "support/WritingRecord.h"

#include "moxread/FormatError.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

std::set<std::string> namesIn(fs::path const& folder)
{
    std::set<std::string> names;
    for (auto const& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

std::string comparable(fs::path const& path)
{
    try {
        return Support::withoutWritingRecord(path.string());
    } catch (MoxRead::FormatError const&) {
        // No model: a file that was not finished.
        return Support::contentOf(path);
    }
}

bool areLogsEqual(fs::path const& expectedPath, fs::path const& foundPath)
{
    std::istringstream expectedLog(Support::contentOf(expectedPath));
    std::istringstream foundLog(Support::contentOf(foundPath));
    std::string expected;
    std::string found;
    while (std::getline(expectedLog, expected)) {
        if (!std::getline(foundLog, found))
            found = "nothing more";
        if (found != expected) {
            std::cerr << "expected: " << expected << "\nfound:    " << found << '\n';
            return false;
        }
    }
    if (std::getline(foundLog, found)) {
        std::cerr << "expected: nothing more\nfound:    " << found << '\n';
        return false;
    }
    return true;
}

bool areModelsEqual(fs::path const& expected, fs::path const& found)
{
    auto const names = namesIn(expected);
    if (namesIn(found) != names) {
        std::cerr << "the folders have not the same files\n";
        return false;
    }
    std::size_t models = 0;
    for (std::string const& name : names) {
        if (name == "log")
            continue;
        ++models;
        if (comparable(expected / name) != comparable(found / name)) {
            std::cerr << name << " differs\n";
            return false;
        }
    }
    std::cout << models << " models are equal\n";
    return models != 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "compare EXPECTED FOUND\n";
        return 2;
    }
    try {
        fs::path const expected = argv[1];
        fs::path const found = argv[2];
        return areLogsEqual(expected / "log", found / "log") && areModelsEqual(expected, found) ? 0
                                                                                                : 1;
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << '\n';
    }
    return 1;
}
