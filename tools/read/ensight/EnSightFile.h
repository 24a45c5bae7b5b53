#ifndef READ_ENSIGHT_ENSIGHTFILE_H
#define READ_ENSIGHT_ENSIGHTFILE_H

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace VtkRead {

/// A data file of EnSight that is walked through, without a value of it being kept. What is asked
/// for and is not there raises `Exchange::Error`: the file was cut off.
class EnSightFile
{
public:
    enum class Format
    {
        Text,
        C,
        Fortran
    };

    /// Raised by what only a reader that knows more can judge.
    class Unknown
    {};

    /// In a text, `perLine` numbers of at least `width` characters each are in a line.
    struct Numbers
    {
        std::uint64_t count;
        std::uint64_t perLine;
        std::uint64_t width;
    };

    struct Tally
    {
        std::uint64_t sum;
        std::uint64_t last;
    };

    using Words = std::vector<std::string>;

    EnSightFile(std::filesystem::path path, Format format);

    /// Told by the first line of a mesh.
    static Format formatOf(std::filesystem::path const& path);

    std::filesystem::path const& path() const { return path_; }
    bool isText() const { return format_ == Format::Text; }

    /// Whether the file holds several steps, each between two lines that say so.
    bool isSeries() const { return isSeries_; }

    /// Whether a line is the one that a step of a series begins with.
    static bool beginsStep(std::string const& line);

    /// Up to the first line of description of a step, which is read.
    void beginStep();

    /// A line that may be anything.
    std::string description();

    /// The words of the line that a section begins with, of which the first one may be empty.
    /// Nothing at the end of the step.
    std::optional<Words> nextSection();

    /// A line that has to be there.
    Words section();

    /// Of a line that begins a part in the format before Gold.
    std::uint64_t numberOfPart(Words const& words) const;

    std::uint64_t count();
    std::array<std::uint64_t, 3> threeCounts();

    void skip(Numbers const& numbers);

    /// Skips ids of a binary file.
    /// \return whether they are 1, 2, 3 and so on
    bool skipRunningIds(std::uint64_t count);

    /// Adds up counts, each in a line of its own.
    Tally add(std::uint64_t count);

    /// To be called when the latest line is not understood: it may be the beginning of one that is.
    [[noreturn]] void raiseUnknown() const;

    [[noreturn]] void raiseEnd() const;

private:
    template <std::size_t size>
    void readCounts(std::array<std::uint64_t, size>& counts);

    std::optional<Words> nextWords();
    bool readLine();
    bool readDataLine();
    void requireDataLine();
    void requireNumbers(std::uint64_t count, std::uint64_t width) const;
    void skipLines(Numbers const& numbers);

    void requireBytes(std::uint64_t bytes) const;
    void readBytes(char* to, std::uint64_t bytes);
    void skipBytes(std::uint64_t bytes);
    std::uint64_t integer();
    void marker(std::uint64_t bytes);
    bool readRecordOfLine();

    std::filesystem::path path_;
    std::ifstream stream_;
    Format format_;
    std::uint64_t left_ = 0;
    /// Longer than the lines that VTK's reader takes.
    std::array<char, 1024> buffer_{};
    std::string line_;
    bool isTerminated_ = true;
    bool isSeries_ = false;
    std::optional<bool> isBigEndian_;
};

} // namespace VtkRead

#endif
