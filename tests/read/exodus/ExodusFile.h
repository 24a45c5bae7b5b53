#ifndef TESTS_READ_EXODUS_EXODUSFILE_H
#define TESTS_READ_EXODUS_EXODUSFILE_H

#include <exodusII.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace ExodusTest {

using Ids = std::vector<std::int64_t>;
using Values = std::vector<double>;
using Names = std::vector<std::string>;

/// A file that is written with the field's own library. What is wrong with a call ends the test.
class ExodusFile
{
public:
    struct Options
    {
        /// EX_NETCDF4, EX_ALL_INT64_DB and the like.
        int mode = 0;
        int bytesOfReal = 8;
        int nameLength = 32;
    };

    ExodusFile(std::filesystem::path const& path, ex_init_params const& parameters)
        : ExodusFile(path, parameters, Options())
    {}
    ExodusFile(std::filesystem::path const& path, ex_init_params const& parameters,
               Options const& options);
    ~ExodusFile();

    ExodusFile(ExodusFile const&) = delete;
    ExodusFile& operator=(ExodusFile const&) = delete;

    int id() const { return id_; }

    /// Empty for an axis that the file doesn't have.
    void coordinates(Values const& x, Values const& y, Values const& z);
    void block(std::int64_t id, std::string const& type, std::int64_t nodesPerElement,
               Ids const& connectivity, std::string const& name = "");
    void polygons(std::int64_t id, std::vector<int> const& sizes, Ids const& connectivity);
    void polyhedra(std::int64_t id, std::int64_t count, std::int64_t faces);
    void set(ex_entity_type type, std::int64_t id, Ids const& entries,
             std::string const& name = "");
    void numbers(ex_entity_type type, Ids const& numbers);
    void variables(ex_entity_type type, Names const& names);
    /// One row for each block, one column for each variable.
    void truthTable(int blocks, int variables, std::vector<int> table);
    void time(int step, double time);
    /// Steps and variables from 1, as the library counts.
    void variable(int step, ex_entity_type type, int variable, std::int64_t id,
                  Values const& values);

private:
    int id_ = -1;
};

/// Parameters of a file of three dimensions with nodes, elements and blocks only.
ex_init_params parameters(std::int64_t nodes, std::int64_t elements, std::int64_t blocks,
                          std::int64_t dimension = 3);

/// 0, 1, 2 and so on.
Values counting(std::int64_t count, double first = 0, double step = 1);
/// 1, 2, 3 and so on.
Ids numbersFromOne(std::int64_t count);

} // namespace ExodusTest

#endif
