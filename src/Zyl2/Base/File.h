#ifndef ZYL2_BASE_FILE_H
#define ZYL2_BASE_FILE_H

#include <cstdint>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Base {

/// File that a saver writes. One of the two paths is set, or none.
struct File
{
    std::string path;
    std::wstring widePath;
    // Contract: what follows is carried along for hosts that look at it, and written nowhere.

    std::string formatName;
    /// Always empty here.
    std::vector<std::string> extraNames;
    /// Always 0 here.
    std::uint32_t flags = 0;
};

} // namespace Base
} // namespace Zyl2

#endif
