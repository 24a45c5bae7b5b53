#ifndef BINDINGS_C_TEXT_H
#define BINDINGS_C_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace Zyl2 {
namespace C {

/// A text as C gives it.
/// \param length bytes, or `MOX_TERMINATED`
/// \param what   what failures call it, such as "name"
/// \throws InvalidArguments "the name is null"
std::string textFrom(char const* text, std::size_t length, char const* what);

/// \param length characters, or `MOX_TERMINATED`
/// \throws InvalidArguments as above
std::wstring textFrom(wchar_t const* text, std::size_t length, char const* what);

/// \param separator null for the default
/// \param length    bytes, or `MOX_TERMINATED`
std::string separatorFrom(char const* separator, std::size_t length);

/// \param texts   may be null when there are none
/// \param lengths of each text; null when all of them are terminated
/// \param what    what failures call one of them, such as "path"
/// \throws InvalidArguments "path 2 is null"
std::vector<std::string> textsFrom(char const* const* texts, std::size_t const* lengths,
                                   std::size_t count, char const* what);

} // namespace C
} // namespace Zyl2

#endif
