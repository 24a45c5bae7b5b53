#ifndef TESTS_GMSH_GMSHFILE_H
#define TESTS_GMSH_GMSHFILE_H

#include <exchange/Field.h>
#include <exchange/Report.h>
#include <exchange/Source.h>
#include <gmsh/Gmsh.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <variant>
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

/// A file as the source hands it over, all of it in memory.
struct Opened
{
    explicit Opened(std::filesystem::path const& path, bool skipUnknown = false);

    /// Null when the part doesn't have it. Steps from 0.
    Exchange::Field const* find(std::size_t step, std::string const& name, std::size_t part) const;
    Values values(std::size_t step, std::string const& name, std::size_t part) const;
    Names partNames() const;
    Names warnings() const;

    Exchange::Report report;
    std::vector<Exchange::Part> parts;
    std::vector<Exchange::StepInfo> steps;
    std::vector<std::vector<Exchange::Field>> fields;
};

} // namespace GmshTest

#endif
