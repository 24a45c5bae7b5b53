#include "EnSightFile.h"

#include <exchange/Error.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <sstream>
#include <string_view>
#include <utility>

namespace VtkRead {

namespace {

constexpr std::size_t binaryLine = 80;
constexpr std::string_view blanks = " \t\r";
constexpr std::uint64_t bytesOfNumber = 4;

EnSightFile::Words wordsOf(std::string const& line)
{
    EnSightFile::Words words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// Takes the first number off a text. Nothing if that is none.
std::optional<std::uint64_t> takeCount(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    std::uint64_t count = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    bool const isWhole = text.empty() || blanks.find(text.front()) != std::string_view::npos;
    if (error != std::errc() || !isWhole || count > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return count;
}

} // namespace

EnSightFile::EnSightFile(std::filesystem::path path, Format format)
    : path_(std::move(path)), stream_(path_, std::ios::binary), format_(format)
{
    if (!stream_ || !std::filesystem::is_regular_file(path_))
        throw Unknown();
    left_ = std::filesystem::file_size(path_);
}

EnSightFile::Format EnSightFile::formatOf(std::filesystem::path const& path)
{
    std::string start(binaryLine, '\0');
    std::ifstream(path, std::ios::binary).read(start.data(), binaryLine);
    if (start.find("Fortran Binary") != std::string::npos)
        return Format::Fortran;
    return start.find("C Binary") != std::string::npos ? Format::C : Format::Text;
}

void EnSightFile::raiseEnd() const
{
    throw Exchange::Error("The file '" + path_.string() + "' ends before its last value.");
}

void EnSightFile::raiseUnknown() const
{
    if (!isTerminated_)
        raiseEnd();
    throw Unknown();
}

bool EnSightFile::beginsStep(std::string const& line)
{
    return line.rfind("BEGIN TIME STEP", 0) == 0;
}

void EnSightFile::beginStep()
{
    if (beginsStep(description())) {
        isSeries_ = true;
        description();
    } else if (isSeries_) {
        raiseUnknown();
    }
}

std::string EnSightFile::description()
{
    if (!readLine())
        raiseEnd();
    return line_;
}

std::optional<EnSightFile::Words> EnSightFile::nextSection()
{
    auto words = nextWords();
    if (!isSeries_)
        return words;
    if (!words)
        raiseEnd();
    return *words == Words{"END", "TIME", "STEP"} ? std::nullopt : words;
}

EnSightFile::Words EnSightFile::section()
{
    auto words = nextWords();
    if (!words)
        raiseEnd();
    return std::move(*words);
}

std::optional<EnSightFile::Words> EnSightFile::nextWords()
{
    if (!readDataLine())
        return std::nullopt;
    Words words = wordsOf(line_);
    if (words.empty())
        words.emplace_back();
    return words;
}

std::uint64_t EnSightFile::numberOfPart(Words const& words) const
{
    std::string_view text = words.back();
    auto const number = takeCount(text);
    if (!number)
        raiseUnknown();
    return *number;
}

std::uint64_t EnSightFile::count()
{
    std::array<std::uint64_t, 1> counts{};
    readCounts(counts);
    return counts.front();
}

std::array<std::uint64_t, 3> EnSightFile::threeCounts()
{
    std::array<std::uint64_t, 3> counts{};
    readCounts(counts);
    return counts;
}

template <std::size_t size>
void EnSightFile::readCounts(std::array<std::uint64_t, size>& counts)
{
    if (isText())
        requireDataLine();
    else
        marker(size * bytesOfNumber);
    std::string_view text = line_;
    for (std::uint64_t& count : counts) {
        auto const value = isText() ? takeCount(text) : integer();
        if (!value)
            raiseUnknown();
        count = *value;
    }
    if (!isText())
        marker(size * bytesOfNumber);
}

void EnSightFile::skip(Numbers const& numbers)
{
    if (numbers.count == 0)
        return;
    if (isText())
        return skipLines(numbers);
    std::uint64_t const bytes = numbers.count * bytesOfNumber;
    marker(bytes);
    skipBytes(bytes);
    marker(bytes);
}

bool EnSightFile::skipRunningIds(std::uint64_t count)
{
    if (count == 0)
        return true;
    bool areRunning = true;
    marker(count * bytesOfNumber);
    requireBytes(count * bytesOfNumber);
    for (std::uint64_t i = 0; i < count; ++i)
        areRunning = integer() == i + 1 && areRunning;
    marker(count * bytesOfNumber);
    return areRunning;
}

EnSightFile::Tally EnSightFile::add(std::uint64_t count)
{
    Tally tally{0, 0};
    if (count == 0)
        return tally;
    if (!isText()) {
        marker(count * bytesOfNumber);
        requireBytes(count * bytesOfNumber);
    }
    for (std::uint64_t i = 0; i < count; ++i) {
        tally.last = isText() ? this->count() : integer();
        tally.sum += tally.last;
    }
    if (!isText())
        marker(count * bytesOfNumber);
    return tally;
}

bool EnSightFile::readLine()
{
    if (!isText())
        return readRecordOfLine();
    stream_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (stream_.fail() && !stream_.eof())
        throw Unknown();
    if (stream_.fail())
        return false;
    line_ = buffer_.data();
    isTerminated_ = !stream_.eof();
    return true;
}

bool EnSightFile::readDataLine()
{
    while (readLine())
        if (!isText() ||
            (line_.find_first_not_of(blanks) != std::string::npos && line_.front() != '#'))
            return true;
    return false;
}

void EnSightFile::requireDataLine()
{
    if (!readDataLine())
        raiseEnd();
}

void EnSightFile::skipLines(Numbers const& numbers)
{
    std::uint64_t width = numbers.width;
    for (std::uint64_t done = 0; done < numbers.count; done += numbers.perLine) {
        requireDataLine();
        if (!isTerminated_)
            requireNumbers(std::min(numbers.perLine, numbers.count - done), width);
        width = std::max<std::uint64_t>(width, line_.size() / numbers.perLine);
    }
}

/// The last number of a line that has no end is whole if it has all the characters that numbers
/// have in this file.
void EnSightFile::requireNumbers(std::uint64_t count, std::uint64_t width) const
{
    constexpr std::size_t exponent = 4;
    auto const mark = line_.find_last_of("eE");
    if (line_.size() < count * width ||
        (mark != std::string::npos && line_.size() < mark + exponent))
        raiseEnd();
}

void EnSightFile::requireBytes(std::uint64_t bytes) const
{
    if (bytes > left_)
        raiseEnd();
}

void EnSightFile::readBytes(char* to, std::uint64_t bytes)
{
    requireBytes(bytes);
    stream_.read(to, static_cast<std::streamsize>(bytes));
    left_ -= bytes;
}

void EnSightFile::skipBytes(std::uint64_t bytes)
{
    requireBytes(bytes);
    stream_.seekg(static_cast<std::streamoff>(bytes), std::ios::cur);
    left_ -= bytes;
}

/// As no file tells its order of bytes, the first number does, which is never a large one.
std::uint64_t EnSightFile::integer()
{
    std::array<char, bytesOfNumber> bytes{};
    readBytes(bytes.data(), bytes.size());
    std::uint64_t little = 0;
    std::uint64_t big = 0;
    constexpr unsigned int bitsOfByte = 8;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        big = (big << bitsOfByte) | static_cast<unsigned char>(bytes[i]);
        little |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (bitsOfByte * i);
    }
    if (!isBigEndian_ && little != big)
        isBigEndian_ = big < little;
    std::uint64_t const value = isBigEndian_.value_or(false) ? big : little;
    if (value > std::numeric_limits<std::int32_t>::max())
        throw Unknown();
    return value;
}

/// Fortran puts the length of each record before and behind it.
void EnSightFile::marker(std::uint64_t bytes)
{
    if (format_ == Format::Fortran && integer() != bytes)
        throw Unknown();
}

bool EnSightFile::readRecordOfLine()
{
    if (left_ == 0)
        return false;
    marker(binaryLine);
    line_.assign(binaryLine, '\0');
    readBytes(line_.data(), binaryLine);
    marker(binaryLine);
    line_.erase(std::min(line_.find('\0'), line_.size()));
    return true;
}

} // namespace VtkRead
