#include "Zyl2/Util/Files.h"

#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zyl2Util {

std::string Narrowed(std::wstring const& text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (wchar_t const character : text)
        narrow.push_back(static_cast<char>(static_cast<unsigned char>(character)));
    return narrow;
}

bool FileExists(char const* name)
{
    return access(name, F_OK) == 0;
}

bool FileExists(wchar_t const* name)
{
    return FileExists(Narrowed(name).c_str());
}

bool HasName(std::FILE* stream)
{
    struct stat status
    {};
    int const file = fileno(stream);
    return file >= 0 && fstat(file, &status) == 0 && status.st_nlink != 0;
}

void ForgetUnwritten(std::FILE* stream)
{
    __fpurge(stream);
}

} // namespace Zyl2Util
