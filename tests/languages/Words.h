#ifndef TESTS_LANGUAGES_WORDS_H
#define TESTS_LANGUAGES_WORDS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

namespace Languages {

/// Takes a line of a sequence apart. README.md says what words there are.
class Words
{
public:
    explicit Words(std::string const& line) : rest_(line) {}

    /// \throws std::runtime_error there is none
    std::string word();
    std::int64_t number();
    std::size_t count() { return static_cast<std::size_t>(number()); }
    float float32();
    double float64();
    std::string text();
    std::optional<std::string> optionalText();

private:
    std::istringstream rest_;
};

/// Puts a line of a sequence together.
class Line
{
public:
    Line& word(std::string const& word);
    Line& number(std::int64_t number) { return word(std::to_string(number)); }
    Line& float32(float value);
    Line& float64(double value);
    Line& text(std::string const& text);
    Line& optionalText(std::optional<std::string> const& text);

    std::string const& string() const { return line_; }

private:
    std::string line_;
};

} // namespace Languages

#endif
