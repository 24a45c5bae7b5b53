#include "ExodusFile.h"

#include <numeric>
#include <stdexcept>

namespace ExodusTest {

namespace {

void require(int status)
{
    if (status != 0)
        throw std::runtime_error("the test's file can't be written");
}

void const* dataOf(Values const& values)
{
    return values.empty() ? nullptr : values.data();
}

std::vector<char*> pointersTo(Names& names)
{
    std::vector<char*> pointers;
    for (std::string& name : names)
        pointers.push_back(&name[0]);
    return pointers;
}

} // namespace

ExodusFile::ExodusFile(std::filesystem::path const& path, ex_init_params const& parameters,
                       Options const& options)
{
    int apiSize = sizeof(double);
    int fileSize = options.bytesOfReal;
    int const mode = EX_CLOBBER | EX_ALL_INT64_API | options.mode;
    id_ = ex_create(path.c_str(), mode, &apiSize, &fileSize);
    if (id_ < 0)
        throw std::runtime_error("the test's file can't be created");
    ex_set_max_name_length(id_, options.nameLength);
    require(ex_put_init_ext(id_, &parameters));
}

ExodusFile::~ExodusFile()
{
    ex_close(id_);
}

void ExodusFile::coordinates(Values const& x, Values const& y, Values const& z)
{
    require(ex_put_coord(id_, dataOf(x), dataOf(y), dataOf(z)));
}

void ExodusFile::block(std::int64_t id, std::string const& type, std::int64_t nodesPerElement,
                       Ids const& connectivity, std::string const& name)
{
    std::int64_t const count = static_cast<std::int64_t>(connectivity.size()) / nodesPerElement;
    require(ex_put_block(id_, EX_ELEM_BLOCK, id, type.c_str(), count, nodesPerElement, 0, 0, 0));
    if (count != 0)
        require(ex_put_conn(id_, EX_ELEM_BLOCK, id, connectivity.data(), nullptr, nullptr));
    if (!name.empty())
        require(ex_put_name(id_, EX_ELEM_BLOCK, id, name.c_str()));
}

void ExodusFile::polygons(std::int64_t id, std::vector<int> const& sizes, Ids const& connectivity)
{
    require(ex_put_block(id_, EX_ELEM_BLOCK, id, "nsided", static_cast<std::int64_t>(sizes.size()),
                         static_cast<std::int64_t>(connectivity.size()), 0, 0, 0));
    require(ex_put_conn(id_, EX_ELEM_BLOCK, id, connectivity.data(), nullptr, nullptr));
    require(ex_put_entity_count_per_polyhedra(id_, EX_ELEM_BLOCK, id, sizes.data()));
}

void ExodusFile::polyhedra(std::int64_t id, std::int64_t count, std::int64_t faces)
{
    require(ex_put_block(id_, EX_ELEM_BLOCK, id, "nfaced", count, 0, 0, faces, 0));
}

void ExodusFile::set(ex_entity_type type, std::int64_t id, Ids const& entries,
                     std::string const& name)
{
    require(ex_put_set_param(id_, type, id, static_cast<std::int64_t>(entries.size()), 0));
    if (!entries.empty())
        require(ex_put_set(id_, type, id, entries.data(), nullptr));
    if (!name.empty())
        require(ex_put_name(id_, type, id, name.c_str()));
}

void ExodusFile::numbers(ex_entity_type type, Ids const& numbers)
{
    require(ex_put_id_map(id_, type, numbers.data()));
}

void ExodusFile::variables(ex_entity_type type, Names const& names)
{
    Names copies = names;
    int const count = static_cast<int>(names.size());
    require(ex_put_variable_param(id_, type, count));
    require(ex_put_variable_names(id_, type, count, pointersTo(copies).data()));
}

void ExodusFile::truthTable(int blocks, int variables, std::vector<int> table)
{
    require(ex_put_truth_table(id_, EX_ELEM_BLOCK, blocks, variables, table.data()));
}

void ExodusFile::time(int step, double time)
{
    require(ex_put_time(id_, step, &time));
}

void ExodusFile::variable(int step, ex_entity_type type, int variable, std::int64_t id,
                          Values const& values)
{
    require(ex_put_var(id_, step, type, variable, id, static_cast<std::int64_t>(values.size()),
                       values.data()));
}

ex_init_params parameters(std::int64_t nodes, std::int64_t elements, std::int64_t blocks,
                          std::int64_t dimension)
{
    ex_init_params parameters = {};
    parameters.num_dim = dimension;
    parameters.num_nodes = nodes;
    parameters.num_elem = elements;
    parameters.num_elem_blk = blocks;
    return parameters;
}

Values counting(std::int64_t count, double first, double step)
{
    Values values(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = first + step * static_cast<double>(i);
    return values;
}

Ids numbersFromOne(std::int64_t count)
{
    Ids numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

} // namespace ExodusTest
