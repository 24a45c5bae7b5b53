#ifndef TESTS_READ_GMSH_GMSHFILE_H
#define TESTS_READ_GMSH_GMSHFILE_H

#include "support/SourceContent.h"

#include <read/gmsh/Source.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace GmshTest {

using Ids = std::vector<std::int64_t>;
using Rows = std::vector<std::uint32_t>;
using Values = std::vector<double>;
using Names = std::vector<std::string>;

/// The library, for a test that writes a file with it. Ends before the file is read.
class Library
{
public:
    Library();
    ~Library();
    Library(Library const&) = delete;
    Library& operator=(Library const&) = delete;
};

struct Opened : Support::SourceContent
{
    explicit Opened(std::filesystem::path const& path, bool skipUnknown = false)
        : SourceContent(Gmsh::open, path, skipUnknown)
    {}
};

} // namespace GmshTest

#endif
