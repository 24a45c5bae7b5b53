#ifndef ZYL2_UTIL_FILES_H
#define ZYL2_UTIL_FILES_H

#include <string>

namespace Zyl2Util {

/// The low 8 bits of each character.
std::string Narrowed(std::wstring const& text);

/// Whether something stands at the path.
bool FileExists(char const* name);

/// Whether something stands at the narrowed path.
bool FileExists(wchar_t const* name);

} // namespace Zyl2Util

#endif
