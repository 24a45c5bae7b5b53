#include "Zyl2/Exception/Sentence.h"

#include <array>
#include <charconv>

namespace Zyl2 {
namespace Exception {

namespace {

void append(std::string& sentence, std::string_view text)
{
    sentence += text;
}

void append(std::string& sentence, std::int64_t number)
{
    sentence += std::to_string(number);
}

void append(std::string& sentence, std::uint64_t number)
{
    sentence += std::to_string(number);
}

void append(std::string& sentence, double number)
{
    // As few digits as tell the number from its neighbours, whatever the host's locale.
    std::array<char, 32> digits{};
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    sentence.append(digits.data(), written.ptr);
}

} // namespace

void SentencePart::appendTo(std::string& sentence) const
{
    std::visit([&](auto const& value) { append(sentence, value); }, value_);
}

std::string joined(std::initializer_list<SentencePart> parts) noexcept
{
    try {
        std::string sentence;
        for (SentencePart const& part : parts)
            part.appendTo(sentence);
        return sentence;
    } catch (...) {
        return {};
    }
}

} // namespace Exception
} // namespace Zyl2
