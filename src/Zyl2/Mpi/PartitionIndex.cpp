// An index, in JSON:
//
//   {
//     "format": "moxwriter partitioned model",
//     "version": 1,
//     "complete": true,
//     "ranks": 4,
//     "files": [
//       {"name": "wave.0.mox", "ranks": [[0, 1]], "size": 5120, "rootIndex": "1c291ca3"},
//       {"name": "wave.1.mox", "ranks": [[2, 3]], "size": 5098, "rootIndex": "90af02b7"}
//     ]
//   }
//
// Ranks are pairs of a first and a last one. While the files are written, "complete" is false and
// no file has "size" and "rootIndex".

#include "Zyl2/Mpi/PartitionIndex.h"

#include "Zyl2/Mpi/Failure.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;

namespace {

constexpr char const* Ending = ".moxs";
constexpr long RootIndexStart = 12;
constexpr std::size_t RootIndexLength = 2788;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void raiseForFile(Exception::Site<Exception::FileWriteException> const& site,
                               std::string const& path, char const* what)
{
    raiseWith(site, path + " " + what + ": " + std::generic_category().message(errno));
}

std::uint32_t crc32(unsigned char const* bytes, std::size_t count)
{
    constexpr std::uint32_t Polynomial = 0xEDB88320U;
    std::uint32_t crc = 0xFFFFFFFFU;
    for (std::size_t i = 0; i < count; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? Polynomial : 0U);
    }
    return ~crc;
}

std::string quoted(std::string const& text)
{
    std::string result = "\"";
    for (char const character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        if (static_cast<unsigned char>(character) >= 0x20U) {
            result += character;
            continue;
        }
        std::array<char, 8> escape{};
        (void)std::snprintf(escape.data(), escape.size(), "\\u%04x",
                            static_cast<unsigned int>(character));
        result += escape.data();
    }
    return result + "\"";
}

/// The ranks of each file, as pairs of a first and a last one.
std::vector<std::string> ranksOf(std::vector<int> const& fileOfRank, int fileCount)
{
    std::vector<std::string> ranks(static_cast<std::size_t>(fileCount));
    for (std::size_t first = 0; first < fileOfRank.size();) {
        std::size_t last = first;
        while (last + 1 < fileOfRank.size() && fileOfRank[last + 1] == fileOfRank[first])
            ++last;
        std::string& list = ranks[static_cast<std::size_t>(fileOfRank[first])];
        list += (list.empty() ? "[" : ", [") + std::to_string(first) + ", " + std::to_string(last) +
                "]";
        first = last + 1;
    }
    return ranks;
}

std::string textOf(FileState const& state)
{
    std::array<char, 80> text{};
    (void)std::snprintf(text.data(), text.size(), R"(, "size": %llu, "rootIndex": "%08x")",
                        static_cast<unsigned long long>(state.size), state.checksum);
    return text.data();
}

} // namespace

FileState stateOf(std::string const& path)
{
    Stream const stream(std::fopen(path.c_str(), "rb"), std::fclose);
    std::array<unsigned char, RootIndexLength> rootIndex{};
    if (stream == nullptr || std::fseek(stream.get(), RootIndexStart, SEEK_SET) != 0 ||
        std::fread(rootIndex.data(), 1, rootIndex.size(), stream.get()) != rootIndex.size() ||
        std::fseek(stream.get(), 0, SEEK_END) != 0)
        raiseForFile(Sites::FileNotReadAgain, path, "cannot be read again");
    return {static_cast<std::uint64_t>(std::ftell(stream.get())),
            crc32(rootIndex.data(), rootIndex.size())};
}

PartitionIndex::PartitionIndex(std::string const& path, int fileCount)
    : path_(path), fileCount_(fileCount)
{
    std::size_t const length = std::strlen(Ending);
    if (path.size() <= length || path.compare(path.size() - length, length, Ending) != 0)
        raiseWith(Sites::OtherEnding, "the path \"" + path + "\" does not end with .moxs");
}

std::string PartitionIndex::pathOf(int file) const
{
    return path_.substr(0, path_.rfind('/') + 1) + nameOf(file);
}

/// With as many digits as the last file needs, so that the names are sorted as the files are.
std::string PartitionIndex::nameOf(int file) const
{
    std::size_t const start = path_.rfind('/') + 1;
    std::string const stem = path_.substr(start, path_.size() - start - std::strlen(Ending));
    std::string number = std::to_string(file);
    std::size_t const digits = std::to_string(fileCount_ - 1).size();
    number.insert(0, digits - number.size(), '0');
    return stem + "." + number + ".mox";
}

void PartitionIndex::write(std::vector<int> const& fileOfRank,
                           std::vector<FileState> const& states) const
{
    std::string const content = text(fileOfRank, states);
    std::string const temporary = path_ + ".part";
    {
        Stream stream(std::fopen(temporary.c_str(), "wb"), std::fclose);
        if (stream == nullptr)
            raiseForFile(Sites::IndexNotCreated, temporary, "cannot be created");
        bool const isWritten =
            std::fwrite(content.data(), 1, content.size(), stream.get()) == content.size();
        if (std::fclose(stream.release()) != 0 || !isWritten) {
            (void)std::remove(temporary.c_str());
            raiseForFile(Sites::IndexNotWritten, temporary, "cannot be written");
        }
    }
    if (std::rename(temporary.c_str(), path_.c_str()) != 0) {
        (void)std::remove(temporary.c_str());
        raiseForFile(Sites::IndexNotReplaced, path_, "cannot be replaced");
    }
}

std::string PartitionIndex::text(std::vector<int> const& fileOfRank,
                                 std::vector<FileState> const& states) const
{
    std::string text = "{\n  \"format\": \"moxwriter partitioned model\",\n  \"version\": 1,\n"
                       "  \"complete\": ";
    text += states.empty() ? "false" : "true";
    text += ",\n  \"ranks\": " + std::to_string(fileOfRank.size()) + ",\n  \"files\": [\n";
    std::vector<std::string> const ranks = ranksOf(fileOfRank, fileCount_);
    for (int file = 0; file < fileCount_; ++file) {
        auto const number = static_cast<std::size_t>(file);
        text += "    {\"name\": " + quoted(nameOf(file)) + ", \"ranks\": [" + ranks[number] + "]" +
                (states.empty() ? std::string() : textOf(states[number])) +
                (file + 1 == fileCount_ ? "}\n" : "},\n");
    }
    return text + "  ]\n}\n";
}

} // namespace Mpi
} // namespace Zyl2
