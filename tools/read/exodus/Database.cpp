#include "Database.h"

#include "ClassicHeader.h"
#include "TextBuffers.h"
#include "Topology.h"

#include "exchange/Error.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <system_error>

namespace Exodus {

namespace {

constexpr std::size_t maxNameLength = 4096;

[[noreturn]] void fail(std::string const& what)
{
    char const* message = "";
    char const* function = "";
    int code = 0;
    ex_get_err(&message, &function, &code);
    std::string const reason = code < 0 ? std::string(" (") + nc_strerror(code) + ")" : "";
    throw Exchange::Error("The file is damaged: " + what + " cannot be read" + reason + ".");
}

void check(int status, std::string const& what)
{
    if (status < 0)
        fail(what);
}

/// For what must be there: the library only warns of some that isn't.
void require(int status, std::string const& what)
{
    if (status != 0)
        fail(what);
}

class NetcdfFile
{
public:
    /// An absolute path, because the library takes some others for addresses of servers.
    explicit NetcdfFile(std::filesystem::path const& path)
        : status_(nc_open(std::filesystem::absolute(path).c_str(), NC_NOWRITE, &id_))
    {}
    ~NetcdfFile()
    {
        if (status_ == NC_NOERR)
            nc_close(id_);
    }
    NetcdfFile(NetcdfFile const&) = delete;
    NetcdfFile& operator=(NetcdfFile const&) = delete;

    int status() const { return status_; }

    bool hasAttribute(char const* name) const
    {
        return nc_inq_attid(id_, NC_GLOBAL, name, nullptr) == NC_NOERR;
    }

private:
    int id_ = -1;
    int status_;
};

bool hasMagic(std::filesystem::path const& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        return false;
    std::ifstream file(path, std::ios::binary);
    std::string magic(4, '\0');
    file.read(&magic[0], 4);
    return file && (magic.compare(0, 3, "CDF") == 0 || magic == "\x89HDF");
}

bool isExodus(NetcdfFile const& file)
{
    return file.status() == NC_NOERR && file.hasAttribute("version") &&
           (file.hasAttribute("floating_point_word_size") ||
            file.hasAttribute("floating point word size"));
}

void requireWholeFile(std::filesystem::path const& path)
{
    auto const needed = classicFileSize(path);
    if (needed && std::filesystem::file_size(path) < *needed)
        throw Exchange::Error("The file is cut off: it has " +
                              std::to_string(std::filesystem::file_size(path)) + " of " +
                              std::to_string(*needed) + " bytes.");
}

void requireExodus(std::filesystem::path const& path)
{
    if (!hasMagic(path))
        throw Exchange::Error("The file is no Exodus file.");
    requireWholeFile(path);
    NetcdfFile const file(path);
    if (file.status() != NC_NOERR)
        throw Exchange::Error(std::string("The file is no Exodus file, or damaged (") +
                              nc_strerror(file.status()) + ").");
    if (!isExodus(file))
        throw Exchange::Error("The file is a netCDF file, but no Exodus file.");
}

/// What a file that is not damaged can have: the library takes counts for rows of arrays.
void requireCount(std::int64_t count, char const* what)
{
    if (count < 0 || count > std::numeric_limits<std::int32_t>::max())
        throw Exchange::Error("The file has " + std::to_string(count) + " " + what +
                              ", which is not supported.");
}

std::string withoutTrailingBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

double realAt(Reals const& values, std::size_t index)
{
    return std::visit([index](auto const& list) { return static_cast<double>(list[index]); },
                      values);
}

Database::Database(std::filesystem::path const& path)
{
    ex_opts(EX_DEFAULT);
    requireExodus(path);
    openInItsPrecision(path);
    try {
        readParameters();
        if (NodeVariables::areApart(file_))
            nodeVariables_.emplace(file_, nodeCount(), givenVariableNames(EX_NODAL));
    } catch (...) {
        ex_close(file_);
        throw;
    }
}

Database::~Database()
{
    ex_close(file_);
}

void Database::openInItsPrecision(std::filesystem::path const& path)
{
    std::string const name = std::filesystem::absolute(path).string();
    int apiSize = sizeof(double);
    int fileSize = 0;
    float version = 0;
    file_ = ex_open(name.c_str(), EX_READ, &apiSize, &fileSize, &version);
    check(file_, "its header");
    isSinglePrecision_ = fileSize == sizeof(float);
    if (!isSinglePrecision_)
        return;
    ex_close(file_);
    apiSize = sizeof(float);
    file_ = ex_open(name.c_str(), EX_READ, &apiSize, &fileSize, &version);
    check(file_, "its header");
}

void Database::readParameters()
{
    ex_set_int64_status(file_, EX_ALL_INT64_API);
    std::int64_t const length = inquire(EX_INQ_DB_MAX_USED_NAME_LENGTH);
    nameLength_ = std::clamp(static_cast<std::size_t>(std::max<std::int64_t>(length, 0)),
                             nameLength_, maxNameLength);
    ex_set_max_name_length(file_, static_cast<int>(nameLength_));
    check(ex_get_init_ext(file_, &parameters_), "its header");
    requireCount(parameters_.num_nodes, "nodes");
    requireCount(parameters_.num_elem, "elements");
    requireCount(parameters_.num_elem_blk, "element blocks");
    if (parameters_.num_dim < 1 || parameters_.num_dim > 3)
        throw Exchange::Error("The file has coordinates of " + std::to_string(parameters_.num_dim) +
                              " dimensions, which is not supported.");
    if (parameters_.num_nodes == 0)
        throw Exchange::Error("The file has no nodes.");
}

std::string Database::title() const
{
    return withoutTrailingBlanks(parameters_.title);
}

std::int64_t Database::inquire(ex_inquiry question) const
{
    return ex_inquire_int(file_, question);
}

std::vector<std::int64_t> Database::ids(ex_entity_type type, std::int64_t count) const
{
    std::vector<std::int64_t> ids(static_cast<std::size_t>(count));
    if (count != 0)
        check(ex_get_ids(file_, type, ids.data()), "a list of ids");
    return ids;
}

std::vector<std::string> Database::names(ex_entity_type type, std::int64_t count) const
{
    TextBuffers buffers(static_cast<std::size_t>(count), nameLength_);
    if (count != 0)
        check(ex_get_names(file_, type, buffers.pointers()), "a list of names");
    std::vector<std::string> names = buffers.texts();
    std::transform(names.begin(), names.end(), names.begin(), withoutTrailingBlanks);
    return names;
}

std::vector<std::int64_t> Database::numbers(ex_entity_type type, std::size_t count) const
{
    std::vector<std::int64_t> numbers(count);
    if (count != 0)
        check(ex_get_id_map(file_, type, numbers.data()), "a list of numbers");
    return numbers;
}

ex_block Database::block(std::int64_t id) const
{
    ex_block block = {};
    block.id = id;
    block.type = EX_ELEM_BLOCK;
    check(ex_get_block_param(file_, &block), "the element block " + std::to_string(id));
    requireCount(block.num_entry, "elements in a block");
    requireCount(block.num_nodes_per_entry, "nodes for each element of a block");
    return block;
}

std::vector<std::int64_t> Database::connectivity(ex_block const& block) const
{
    // A block of polygons has the number of all its nodes where other blocks have the number of
    // nodes of one element.
    auto const nodes = static_cast<std::size_t>(block.num_nodes_per_entry);
    auto const count = static_cast<std::size_t>(block.num_entry);
    std::vector<std::int64_t> connectivity(isPolygon(block.topology) ? nodes : nodes * count);
    if (!connectivity.empty())
        require(ex_get_conn(file_, EX_ELEM_BLOCK, block.id, connectivity.data(), nullptr, nullptr),
                "the nodes of the element block " + std::to_string(block.id));
    return connectivity;
}

std::vector<int> Database::polygonSizes(ex_block const& block) const
{
    std::vector<int> sizes(static_cast<std::size_t>(block.num_entry));
    if (!sizes.empty())
        require(ex_get_entity_count_per_polyhedra(file_, EX_ELEM_BLOCK, block.id, sizes.data()),
                "the polygons of the element block " + std::to_string(block.id));
    return sizes;
}

Database::SetSizes Database::setSizes(ex_entity_type type, std::int64_t id) const
{
    SetSizes sizes;
    check(ex_get_set_param(file_, type, id, &sizes.entries, &sizes.factors),
          "the set " + std::to_string(id));
    requireCount(sizes.entries, "entries in a set");
    return sizes;
}

bool Database::hasDistributionFactors(ex_entity_type type, std::int64_t id) const
{
    return setSizes(type, id).factors != 0;
}

std::vector<std::int64_t> Database::setEntries(ex_entity_type type, std::int64_t id) const
{
    std::vector<std::int64_t> entries(static_cast<std::size_t>(setSizes(type, id).entries));
    if (!entries.empty())
        require(ex_get_set(file_, type, id, entries.data(), nullptr),
                "the set " + std::to_string(id));
    return entries;
}

Reals Database::room(std::size_t count) const
{
    if (isSinglePrecision_)
        return std::vector<float>(count);
    return std::vector<double>(count);
}

void* Database::dataOf(Reals& values)
{
    return std::visit([](auto& list) -> void* { return list.data(); }, values);
}

std::array<Reals, 3> Database::coordinates() const
{
    std::array<Reals, 3> axes;
    std::array<void*, 3> pointers = {nullptr, nullptr, nullptr};
    for (std::size_t i = 0; i < static_cast<std::size_t>(parameters_.num_dim); ++i) {
        axes[i] = room(nodeCount());
        pointers[i] = dataOf(axes[i]);
    }
    require(ex_get_coord(file_, pointers[0], pointers[1], pointers[2]), "the coordinates");
    return axes;
}

Reals Database::times() const
{
    std::int64_t const count = inquire(EX_INQ_TIME);
    requireCount(count, "time steps");
    Reals times = room(static_cast<std::size_t>(count));
    if (count != 0)
        require(ex_get_all_times(file_, dataOf(times)), "the times of the steps");
    return times;
}

int Database::variableCount(ex_entity_type type) const
{
    int count = 0;
    check(ex_get_variable_param(file_, type, &count), "the number of variables");
    return std::max(count, 0);
}

std::vector<std::string> Database::variableNames(ex_entity_type type) const
{
    if (type == EX_NODAL && nodeVariables_)
        return nodeVariables_->names();
    return givenVariableNames(type);
}

std::vector<std::string> Database::givenVariableNames(ex_entity_type type) const
{
    int const count = variableCount(type);
    TextBuffers buffers(static_cast<std::size_t>(count), nameLength_);
    if (count != 0)
        require(ex_get_variable_names(file_, type, count, buffers.pointers()),
                "the names of the variables");
    std::vector<std::string> names = buffers.texts();
    std::transform(names.begin(), names.end(), names.begin(), withoutTrailingBlanks);
    return names;
}

std::vector<int> Database::truthTable(ex_entity_type type, std::size_t blocks,
                                      std::size_t variables) const
{
    std::vector<int> table(blocks * variables);
    if (!table.empty())
        check(ex_get_truth_table(file_, type, static_cast<int>(blocks), static_cast<int>(variables),
                                 table.data()),
              "the table of variables and blocks");
    return table;
}

Reals Database::variable(std::size_t step, ex_entity_type type, std::size_t variable,
                         std::int64_t id, std::size_t count) const
{
    Reals values = room(count);
    if (type == EX_NODAL && nodeVariables_)
        nodeVariables_->read(step, variable, values);
    else if (count != 0)
        require(ex_get_var(file_, static_cast<int>(step + 1), type, static_cast<int>(variable + 1),
                           id, static_cast<std::int64_t>(count), dataOf(values)),
                "a variable of step " + std::to_string(step + 1));
    return values;
}

Reals Database::globalVariables(std::size_t step, std::size_t count) const
{
    Reals values = room(count);
    if (count != 0)
        require(ex_get_glob_vars(file_, static_cast<int>(step + 1), static_cast<int>(count),
                                 dataOf(values)),
                "the global variables of step " + std::to_string(step + 1));
    return values;
}

std::vector<std::array<std::string, 4>> Database::qualityRecords() const
{
    auto const count = static_cast<std::size_t>(std::max<std::int64_t>(inquire(EX_INQ_QA), 0));
    if (count == 0)
        return {};
    TextBuffers buffers(count * 4, MAX_STR_LENGTH);
    require(ex_get_qa(file_, reinterpret_cast<char*(*)[4]>(buffers.pointers())),
            "the list of programs that wrote it");
    std::vector<std::string> const texts = buffers.texts();
    std::vector<std::array<std::string, 4>> records(count);
    for (std::size_t i = 0; i < texts.size(); ++i)
        records[i / 4][i % 4] = withoutTrailingBlanks(texts[i]);
    return records;
}

std::vector<std::string> Database::informationRecords() const
{
    auto const count = static_cast<std::size_t>(std::max<std::int64_t>(inquire(EX_INQ_INFO), 0));
    TextBuffers buffers(count, MAX_LINE_LENGTH);
    if (count != 0)
        require(ex_get_info(file_, buffers.pointers()), "the information records");
    std::vector<std::string> records = buffers.texts();
    std::transform(records.begin(), records.end(), records.begin(), withoutTrailingBlanks);
    return records;
}

} // namespace Exodus
