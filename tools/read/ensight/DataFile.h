#ifndef READ_ENSIGHT_DATAFILE_H
#define READ_ENSIGHT_DATAFILE_H

#include "Words.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace EnSight {

/// A data file of a case, read from front to back. What is not as it has to be raises
/// `Exchange::Error`, which names the file and the line or byte. No count in a file gets memory for
/// more numbers than can be in the rest of the file.
class DataFile
{
public:
    enum class Format
    {
        Text,
        C,
        Fortran
    };

    enum class ByteOrder
    {
        Unknown,
        Little,
        Big
    };

    /// How the numbers of a mesh and of its variables are written.
    struct Encoding
    {
        Format format = Format::Text;
        bool isGold = true;
        ByteOrder order = ByteOrder::Unknown;
    };

    struct Place
    {
        std::uint64_t byte = 0;
        std::uint64_t line = 0;
    };

    template <typename Number>
    struct Rows
    {
        std::vector<std::int32_t> ids;
        std::vector<Number> numbers;
    };

    DataFile(std::filesystem::path path, Encoding encoding);

    /// The encoding that the first line of a mesh tells; the order of bytes stays unknown.
    static Encoding encodingOf(std::filesystem::path const& path, bool isGold);

    std::filesystem::path const& path() const { return path_; }
    Encoding const& encoding() const { return encoding_; }
    bool isText() const { return encoding_.format == Format::Text; }
    bool isGold() const { return encoding_.isGold; }
    Place const& place() const { return place_; }
    void goTo(Place const& place);

    /// Whether the file holds several steps, each between two lines that say so.
    bool isSeries() const { return isSeries_; }
    /// Reads up to the first line of description of a step, which is read as well.
    void beginStep();

    /// A line that may be anything.
    std::string description();
    /// The words of the line that a section begins with. Nothing at the end of the step.
    std::optional<Words> nextSection();
    /// A line that has to be there.
    Words section();

    std::size_t count();
    std::vector<std::int32_t> integers(std::uint64_t count);
    std::vector<float> reals(std::uint64_t count);
    /// \param haveIds whether each row has one: in a text in its line, else all in front
    Rows<std::int32_t> rowsOfIntegers(std::uint64_t count, std::uint64_t perRow, bool haveIds);
    Rows<float> rowsOfReals(std::uint64_t count, std::uint64_t perRow, bool haveIds);

    /// Raises the end of the file if so many numbers can't be in the rest of it.
    void requireNumbers(std::uint64_t count) const;
    [[noreturn]] void raiseEnd() const;
    /// To be called when the latest line is no section that there may be: where the file ends
    /// there, it may be the beginning of one.
    [[noreturn]] void raiseUnknown() const;
    /// \param what the rest of a sentence that begins with the file
    [[noreturn]] void raise(std::string const& what) const;

private:
    template <typename Number>
    Rows<Number> rows(std::uint64_t count, std::uint64_t perRow, bool haveIds);
    template <typename Number>
    std::vector<Number> numbers(std::uint64_t count);
    template <typename Number>
    std::vector<Number> record(std::uint64_t count);
    template <typename Number>
    Number take();
    void requireWhole(std::string_view field, std::size_t& widest) const;
    void endLine();

    bool readLine();
    bool readDataLine();

    void readBytes(char* to, std::uint64_t bytes);
    std::uint32_t integer();
    void marker(std::uint64_t bytes);
    bool readRecordOfLine();

    std::filesystem::path path_;
    Encoding encoding_;
    std::ifstream stream_;
    std::uint64_t size_ = 0;
    Place place_;
    std::string line_;
    /// The part of `line_` that was not taken yet.
    std::string_view rest_;
    bool isTerminated_ = true;
    bool isSeries_ = false;
    /// The most characters that integers and reals have, blanks before them included.
    std::size_t widestInteger_;
    std::size_t widestReal_;
};

} // namespace EnSight

#endif
