#ifndef ZYL2_UTIL_FILES_H
#define ZYL2_UTIL_FILES_H

#include <cstdio>
#include <string>

namespace Zyl2Util {

/// The low 8 bits of each character.
std::string Narrowed(std::wstring const& text);

/// Whether something stands at the path.
bool FileExists(char const* name);

/// Whether something stands at the narrowed path.
bool FileExists(wchar_t const* name);

/// Whether the stream's file has a name in some folder. A file keeps taking bytes after its last
/// name was removed, and is gone when it is closed.
bool HasName(std::FILE* stream);

/// Drops what was written to the stream and has not reached the file yet.
void ForgetUnwritten(std::FILE* stream);

} // namespace Zyl2Util

#endif
