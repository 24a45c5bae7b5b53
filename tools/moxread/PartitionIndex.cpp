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
// Only a complete one has "size" and "rootIndex": the CRC-32 of the 2788 bytes from 12 on.

#include "moxread/PartitionIndex.h"

#include "moxread/Container.h"
#include "moxread/FormatError.h"
#include "moxread/InputFile.h"
#include "moxread/Text.h"

#include <nlohmann/json.hpp>

#include <zlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace MoxRead {

namespace {

using Json = nlohmann::json;

constexpr char const* formatName = "moxwriter partitioned model";
constexpr std::uint32_t knownVersion = 1;
constexpr std::uint64_t rootIndexStart = 12;
constexpr std::size_t rootIndexLength = 2788;
constexpr std::uint32_t mostRanks = 1U << 30U;

template <typename T>
T member(Json const& object, char const* name)
{
    try {
        return object.at(name).get<T>();
    } catch (Json::exception const&) {
        throw FormatError("the index has no " + MoxRead::quoted(name) + " of the right kind");
    }
}

std::uint32_t checksumFrom(std::string const& text)
{
    std::uint32_t value = 0;
    auto const* const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, value, 16);
    if (result.ec != std::errc() || result.ptr != end || text.size() != 8)
        throw FormatError("\"rootIndex\" is " + MoxRead::quoted(text) +
                          ", not 8 hexadecimal digits");
    return value;
}

std::string inDigits(std::uint32_t checksum)
{
    std::array<char, 9> text{};
    (void)std::snprintf(text.data(), text.size(), "%08x", checksum);
    return text.data();
}

std::uint32_t checksumOf(InputFile const& file)
{
    std::array<std::uint8_t, rootIndexLength> bytes{};
    file.read(rootIndexStart, bytes.data(), bytes.size());
    return static_cast<std::uint32_t>(crc32(0, bytes.data(), bytes.size()));
}

// Nothing outside the folder is reached by a name in a file.
bool isRelative(std::string const& name)
{
    std::filesystem::path const path(name);
    return !name.empty() && path.is_relative() &&
           std::none_of(path.begin(), path.end(), [](auto const& part) { return part == ".."; });
}

PartitionFile readFile(Json const& entry, bool isComplete)
{
    PartitionFile file;
    file.name = member<std::string>(entry, "name");
    if (!isRelative(file.name))
        throw FormatError("the name " + MoxRead::quoted(file.name) +
                          " leads out of the index's folder");
    file.ranks = member<std::vector<std::pair<std::uint32_t, std::uint32_t>>>(entry, "ranks");
    if (file.ranks.empty())
        throw FormatError("the index has no ranks of " + MoxRead::quoted(file.name));
    if (!isComplete)
        return file;
    file.size = member<std::uint64_t>(entry, "size");
    file.rootIndex = checksumFrom(member<std::string>(entry, "rootIndex"));
    return file;
}

} // namespace

bool PartitionFile::isOf(std::uint32_t rank) const
{
    return std::any_of(ranks.begin(), ranks.end(), [rank](auto const& range) {
        return range.first <= rank && rank <= range.second;
    });
}

std::string PartitionFile::rankText() const
{
    std::string text;
    for (auto const& [first, last] : ranks) {
        text += (text.empty() ? "" : ", ") + std::to_string(first);
        if (last != first)
            text += " to " + std::to_string(last);
    }
    bool const isOne = ranks.size() == 1 && ranks[0].first == ranks[0].second;
    return (isOne ? "rank " : "ranks ") + text;
}

bool PartitionIndex::isIndex(std::string const& path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return false;
    std::ifstream stream(path, std::ios::binary);
    return stream.get() == '{';
}

PartitionIndex::PartitionIndex(std::string const& path) : path_(path)
{
    std::ifstream stream(path, std::ios::binary);
    Json index;
    try {
        index = Json::parse(stream);
    } catch (Json::exception const&) {
        throw FormatError("this is no index: its JSON breaks off, or is none");
    }
    if (!index.is_object() || index.value("format", Json()) != formatName)
        throw FormatError("this is no index of a partitioned model");
    auto const version = member<std::uint32_t>(index, "version");
    if (version != knownVersion)
        throw FormatError("the version of the index is " + std::to_string(version) + ", not 1");
    isComplete_ = member<bool>(index, "complete");
    ranks_ = member<std::uint32_t>(index, "ranks");
    auto const folder = std::filesystem::path(path).parent_path();
    auto const entries = index.find("files");
    if (entries == index.end() || !entries->is_array() || entries->empty())
        throw FormatError("the index has no \"files\"");
    for (Json const& entry : *entries) {
        files_.push_back(readFile(entry, isComplete_));
        files_.back().path = (folder / files_.back().name).string();
    }
    requireEachRankOnce();
}

void PartitionIndex::requireEachRankOnce() const
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> all;
    for (PartitionFile const& file : files_)
        all.insert(all.end(), file.ranks.begin(), file.ranks.end());
    std::sort(all.begin(), all.end());
    std::uint32_t next = 0;
    bool isEachOnce = true;
    for (auto const& [first, last] : all) {
        isEachOnce = isEachOnce && first == next && last >= first && last < mostRanks;
        next = last + 1;
    }
    if (!isEachOnce || next != ranks_)
        throw FormatError("the files of the index are not of each rank once");
}

std::string PartitionIndex::complaintAbout(PartitionFile const& file) const
{
    std::string const name = MoxRead::quoted(file.name) + " of " + file.rankText();
    std::error_code error;
    if (!std::filesystem::exists(file.path, error))
        return name + " is missing";
    if (std::filesystem::is_regular_file(file.path, error) &&
        std::filesystem::file_size(file.path, error) == 0)
        return name + " is empty";
    try {
        Container const container(file.path);
        std::uint32_t const rootIndex = checksumOf(container.file());
        bool const isTheOne =
            !isComplete_ || (container.file().size() == file.size && rootIndex == file.rootIndex);
        return isTheOne
                   ? ""
                   : name + " is of another run: its root index is " + inDigits(rootIndex) +
                         " and its size " + std::to_string(container.file().size()) + ", not " +
                         inDigits(file.rootIndex) + " and " + std::to_string(file.size);
    } catch (FormatError const& failure) {
        // An incomplete one says so with its first word.
        return name + " is " +
               (std::string(failure.what()).rfind("incomplete", 0) == 0 ? "" : "damaged: ") +
               failure.what();
    }
}

PartitionFile PartitionIndex::asFound(PartitionFile const& file)
{
    Container const container(file.path);
    PartitionFile found = file;
    found.size = container.file().size();
    found.rootIndex = checksumOf(container.file());
    return found;
}

void PartitionIndex::requireFiles() const
{
    std::string complaints;
    for (PartitionFile const& file : files_) {
        std::string const complaint = complaintAbout(file);
        if (!complaint.empty())
            complaints += (complaints.empty() ? "" : "\n" + path_ + ": ") + complaint;
    }
    if (!complaints.empty())
        throw FormatError(complaints);
}

} // namespace MoxRead
