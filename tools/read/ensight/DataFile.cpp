#include "DataFile.h"

#include <exchange/Error.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

namespace EnSight {

namespace {

// What a file looks like:
//
//   text     lines; integers in 10 columns (8 before Gold), reals in 12, which may touch
//   C        lines of 80 bytes, filled up with zeros or blanks; numbers of 4 bytes
//   Fortran  the same, with the length of each record, in 4 bytes, before and behind it
constexpr std::size_t binaryLine = 80;
constexpr std::uint64_t bytesOfNumber = 4;
constexpr std::size_t goldIntegerWidth = 10;
constexpr std::size_t oldIntegerWidth = 8;
constexpr std::size_t realWidth = 12;
constexpr std::string_view blanks = " \t\r\f\v";

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), text.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) ==
                      std::tolower(static_cast<unsigned char>(b));
           });
}

std::uint32_t reversed(std::uint32_t bits)
{
    constexpr unsigned int byte = 8;
    constexpr std::uint32_t mask = 0xFF;
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < bytesOfNumber; ++i, bits >>= byte)
        result = (result << byte) | (bits & mask);
    return result;
}

std::uint32_t decoded(char const* bytes, DataFile::ByteOrder order)
{
    std::uint32_t bits = 0;
    for (std::size_t i = bytesOfNumber; i-- > 0;)
        bits = (bits << 8U) | static_cast<unsigned char>(bytes[i]);
    return order == DataFile::ByteOrder::Big ? reversed(bits) : bits;
}

} // namespace

DataFile::DataFile(std::filesystem::path path, Encoding encoding)
    : path_(std::move(path)), encoding_(encoding),
      widestInteger_(encoding.isGold ? goldIntegerWidth : oldIntegerWidth), widestReal_(realWidth)
{
    // A pipe or a device can be opened, too, but reading it may never end.
    if (std::filesystem::is_regular_file(path_))
        stream_.open(path_, std::ios::binary);
    if (!stream_.is_open())
        throw Exchange::Error("There is no file '" + path_.string() + "' that can be read.");
    size_ = std::filesystem::file_size(path_);
}

DataFile::Encoding DataFile::encodingOf(std::filesystem::path const& path, bool isGold)
{
    DataFile file(path, {Format::Text, isGold, ByteOrder::Unknown});
    std::string start(binaryLine, '\0');
    file.stream_.read(start.data(), binaryLine);
    if (beginsWith(start, "C Binary"))
        file.encoding_.format = Format::C;
    else if (beginsWith(std::string_view(start).substr(bytesOfNumber), "Fortran Binary"))
        file.encoding_.format = Format::Fortran;
    return file.encoding_;
}

void DataFile::goTo(Place const& place)
{
    stream_.clear();
    stream_.seekg(static_cast<std::streamoff>(place.byte));
    place_ = place;
}

void DataFile::raise(std::string const& what) const
{
    throw Exchange::Error(
        "The file '" + path_.string() + "' " + what + ", at " +
        (isText() ? "line " + std::to_string(place_.line) : "byte " + std::to_string(place_.byte)) +
        ".");
}

void DataFile::raiseEnd() const
{
    raise("ends before its last value");
}

void DataFile::raiseUnknown() const
{
    if (!isTerminated_)
        raiseEnd();
    raise("is not understood");
}

void DataFile::beginStep()
{
    if (beginsWith(description(), "BEGIN TIME STEP")) {
        isSeries_ = true;
        description();
    } else if (isSeries_) {
        raiseUnknown();
    }
}

std::string DataFile::description()
{
    if (!readLine())
        raiseEnd();
    return line_;
}

std::optional<Words> DataFile::nextSection()
{
    if (!readDataLine()) {
        if (isSeries_)
            raiseEnd();
        return std::nullopt;
    }
    rest_ = {};
    Words words = wordsOf(line_);
    if (words.empty())
        words.emplace_back();
    if (isSeries_ && words == Words{"END", "TIME", "STEP"})
        return std::nullopt;
    return words;
}

Words DataFile::section()
{
    auto words = nextSection();
    if (!words)
        raiseEnd();
    return std::move(*words);
}

std::size_t DataFile::count()
{
    std::int32_t const count = integers(1).front();
    if (count < 0)
        raise("has less than none of something");
    return static_cast<std::size_t>(count);
}

std::vector<std::int32_t> DataFile::integers(std::uint64_t count)
{
    return numbers<std::int32_t>(count);
}

std::vector<float> DataFile::reals(std::uint64_t count)
{
    return numbers<float>(count);
}

DataFile::Rows<std::int32_t> DataFile::rowsOfIntegers(std::uint64_t count, std::uint64_t perRow,
                                                      bool haveIds)
{
    return rows<std::int32_t>(count, perRow, haveIds);
}

DataFile::Rows<float> DataFile::rowsOfReals(std::uint64_t count, std::uint64_t perRow, bool haveIds)
{
    return rows<float>(count, perRow, haveIds);
}

template <typename Number>
DataFile::Rows<Number> DataFile::rows(std::uint64_t count, std::uint64_t perRow, bool haveIds)
{
    Rows<Number> rows;
    if (!isText() || !haveIds) {
        if (haveIds)
            rows.ids = integers(count);
        rows.numbers = numbers<Number>(count * perRow);
        return rows;
    }
    requireNumbers(count * (perRow + 1));
    rows.ids.reserve(count);
    rows.numbers.reserve(count * perRow);
    for (std::uint64_t i = 0; i < count; ++i) {
        rows.ids.push_back(take<std::int32_t>());
        for (std::uint64_t column = 0; column < perRow; ++column)
            rows.numbers.push_back(take<Number>());
    }
    endLine();
    return rows;
}

template <typename Number>
std::vector<Number> DataFile::numbers(std::uint64_t count)
{
    requireNumbers(count);
    if (!isText())
        return record<Number>(count);
    std::vector<Number> numbers;
    numbers.reserve(count);
    while (numbers.size() < count)
        numbers.push_back(take<Number>());
    endLine();
    return numbers;
}

template <typename Number>
std::vector<Number> DataFile::record(std::uint64_t count)
{
    std::vector<Number> numbers(count);
    if (count == 0)
        return numbers;
    marker(count * bytesOfNumber);
    // Up to three integers are counts; the first count of a file tells its order of bytes.
    if (count <= 3 && std::is_same_v<Number, std::int32_t>) {
        for (Number& number : numbers)
            number = static_cast<Number>(integer());
    } else {
        readBytes(reinterpret_cast<char*>(numbers.data()), count * bytesOfNumber);
        for (Number& number : numbers) {
            std::array<char, bytesOfNumber> bytes{};
            std::memcpy(bytes.data(), &number, bytes.size());
            std::uint32_t const bits = decoded(bytes.data(), encoding_.order);
            std::memcpy(&number, &bits, sizeof(bits));
        }
    }
    marker(count * bytesOfNumber);
    return numbers;
}

void DataFile::requireNumbers(std::uint64_t count) const
{
    // In a text, a number takes two bytes at least: a digit and a separator.
    std::uint64_t const left = size_ - std::min(size_, place_.byte) + rest_.size();
    if (count > (isText() ? (left + 1) / 2 : left / bytesOfNumber))
        raiseEnd();
}

/// Takes the next number off the text, which may be in another line.
template <typename Number>
Number DataFile::take()
{
    constexpr bool isInteger = std::is_same_v<Number, std::int32_t>;
    std::size_t start = rest_.find_first_not_of(blanks);
    while (start == std::string_view::npos) {
        if (!readDataLine())
            raiseEnd();
        start = rest_.find_first_not_of(blanks);
    }
    std::size_t const end = std::min(rest_.find_first_of(blanks, start), rest_.size());
    std::size_t limit = end;
    // Integers may touch each other: each then ends where its column does.
    std::size_t const width = isGold() ? goldIntegerWidth : oldIntegerWidth;
    if (isInteger && end - start > width) {
        std::size_t const column = line_.size() - rest_.size() + start;
        limit = std::min(end, start + width - column % width);
    }
    if (rest_[start] == '+')
        ++start;
    Number number{};
    auto const [stop, error] = std::from_chars(rest_.data() + start, rest_.data() + limit, number);
    auto const length = static_cast<std::size_t>(stop - rest_.data());
    bool const isWhole = length == limit || rest_[length] == '-' || rest_[length] == '+';
    if (error == std::errc::invalid_argument || !isWhole)
        raiseUnknown();
    std::string_view const field = rest_.substr(0, length);
    // A number that is too small for a float is read as 0.
    bool const isSmall = field.find("e-") != field.npos || field.find("E-") != field.npos;
    if (error != std::errc() && (isInteger || !isSmall))
        raise("has a number that is too large");
    requireWhole(field, isInteger ? widestInteger_ : widestReal_);
    rest_.remove_prefix(length);
    return number;
}

/// The last number of a line that has no end is whole if it has as many characters as others.
void DataFile::requireWhole(std::string_view field, std::size_t& widest) const
{
    if (isTerminated_ || field.size() < rest_.size()) {
        widest = std::max(widest, field.size());
        return;
    }
    constexpr std::size_t exponent = 4;
    auto const mark = field.find_last_of("eE");
    if (field.size() < widest || (mark != std::string_view::npos && field.size() < mark + exponent))
        raiseEnd();
}

void DataFile::endLine()
{
    if (rest_.find_first_not_of(blanks) != std::string_view::npos)
        raise("has more numbers than there are to be");
}

bool DataFile::readLine()
{
    isTerminated_ = true;
    rest_ = {};
    if (!isText())
        return readRecordOfLine();
    if (!std::getline(stream_, line_))
        return false;
    isTerminated_ = !stream_.eof();
    place_.byte += line_.size() + (isTerminated_ ? 1 : 0);
    ++place_.line;
    return true;
}

bool DataFile::readDataLine()
{
    while (readLine())
        if (!isText() ||
            (line_.find_first_not_of(blanks) != std::string::npos && line_.front() != '#')) {
            rest_ = line_;
            return true;
        }
    return false;
}

void DataFile::readBytes(char* to, std::uint64_t bytes)
{
    if (bytes > size_ - std::min(size_, place_.byte) ||
        !stream_.read(to, static_cast<std::streamsize>(bytes)))
        raiseEnd();
    place_.byte += bytes;
}

/// No C file tells its order of bytes. The first number does, which counts something and is never
/// a large one.
std::uint32_t DataFile::integer()
{
    std::array<char, bytesOfNumber> bytes{};
    readBytes(bytes.data(), bytes.size());
    std::uint32_t const little = decoded(bytes.data(), ByteOrder::Little);
    std::uint32_t const big = decoded(bytes.data(), ByteOrder::Big);
    if (encoding_.order == ByteOrder::Unknown && little != big)
        encoding_.order = big < little ? ByteOrder::Big : ByteOrder::Little;
    return encoding_.order == ByteOrder::Big ? big : little;
}

void DataFile::marker(std::uint64_t bytes)
{
    if (encoding_.format == Format::Fortran && integer() != bytes)
        raise("has a record that is not as long as it is to be");
}

bool DataFile::readRecordOfLine()
{
    if (place_.byte >= size_)
        return false;
    marker(binaryLine);
    line_.assign(binaryLine, '\0');
    readBytes(line_.data(), binaryLine);
    marker(binaryLine);
    line_.erase(std::min(line_.find('\0'), line_.size()));
    return true;
}

} // namespace EnSight
