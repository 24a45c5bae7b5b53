#include "Zyl2/Exception/Sentence.h"

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>

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

void attachDetail(Exception const& failure, std::string_view detail) noexcept
{
    if (detail.empty() || *Zyl2::Exception::detail(failure) != '\0')
        return;
    try {
        failure << Detail(std::string(detail));
    } catch (...) {
        // Without memory the failure still says what it said before there were details.
    }
}

} // namespace Exception
} // namespace Zyl2
