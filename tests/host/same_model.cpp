// Compares model files that different builds wrote with the same calls: nothing but the writing
// record may tell them apart.

#include "container/TemporaryFile.h"
#include "support/WritingRecord.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

int compare(std::vector<std::string> const& paths)
{
    int different = 0;
    auto const bytesOf = [](std::string const& path) {
        return Support::withoutWritingRecord(path);
    };
    std::string const first = bytesOf(paths.front());
    for (std::string const& path : paths)
        if (bytesOf(path) != first) {
            std::cerr << path << " differs from " << paths.front() << '\n';
            ++different;
        }
    return different;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> const paths(argv + 1, argv + argc);
    if (paths.size() < 2) {
        std::cerr << "two files at least\n";
        return 2;
    }
    try {
        return compare(paths) == 0 ? 0 : 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
    }
    return 1;
}
