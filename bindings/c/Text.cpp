#include "Text.h"

#include <moxwriter.h>

#include <Zyl2/Mox2/Model.h>

#include "Failure.h"

namespace Zyl2 {
namespace C {

namespace {

template <typename CharT>
std::basic_string<CharT> copyOf(CharT const* text, std::size_t length)
{
    return length == MOX_TERMINATED ? std::basic_string<CharT>(text)
                                    : std::basic_string<CharT>(text, length);
}

template <typename CharT>
std::basic_string<CharT> checkedCopyOf(CharT const* text, std::size_t length, char const* what)
{
    if (text == nullptr)
        refuse(Exception::sentence("the ", what, " is null"));
    return copyOf(text, length);
}

} // namespace

std::string textFrom(char const* text, std::size_t length, char const* what)
{
    return checkedCopyOf(text, length, what);
}

std::wstring textFrom(wchar_t const* text, std::size_t length, char const* what)
{
    return checkedCopyOf(text, length, what);
}

std::string separatorFrom(char const* separator, std::size_t length)
{
    return separator == nullptr ? Mox2::Model::defaultPathSeparator() : copyOf(separator, length);
}

std::vector<std::string> textsFrom(char const* const* texts, std::size_t const* lengths,
                                   std::size_t count, char const* what)
{
    if (texts == nullptr && count != 0)
        refuse(Exception::sentence("the ", what, "s are null"));
    std::vector<std::string> result;
    result.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        if (texts[index] == nullptr)
            refuse(Exception::sentence(what, " ", index, " is null"));
        result.push_back(
            copyOf(texts[index], lengths == nullptr ? MOX_TERMINATED : lengths[index]));
    }
    return result;
}

} // namespace C
} // namespace Zyl2
