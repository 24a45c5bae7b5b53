#include "NodeVariables.h"

#include "exchange/Error.h"

#include <exodusII.h>
#include <netcdf.h>

#include <array>
#include <cstdint>
#include <limits>

namespace Exodus {

namespace {

/// Step, node and column.
constexpr std::size_t mostAxes = 3;

std::string arrayName(std::size_t number)
{
    return "vals_nod_var" + std::to_string(number);
}

bool hasVariable(int file, std::string const& name)
{
    int ignored = -1;
    return nc_inq_varid(file, name.c_str(), &ignored) == NC_NOERR;
}

void check(int status)
{
    if (status != NC_NOERR)
        throw Exchange::Error(
            std::string("The file is damaged: a variable at the nodes cannot be read (") +
            nc_strerror(status) + ").");
}

/// Three columns are the axes; what others mean, only their writer knows.
std::string endingOf(std::size_t column, std::size_t count)
{
    if (count == 3)
        return "_" + std::string(1, "XYZ"[column]);
    return "_" + std::to_string(column + 1);
}

int readValues(int file, int array, std::size_t const* start, std::size_t const* count,
               std::vector<float>& values)
{
    return nc_get_vara_float(file, array, start, count, values.data());
}

int readValues(int file, int array, std::size_t const* start, std::size_t const* count,
               std::vector<double>& values)
{
    return nc_get_vara_double(file, array, start, count, values.data());
}

} // namespace

NodeVariables::NodeVariables(int file, std::size_t nodeCount, std::vector<std::string> const& names)
    : file_(file), nodeCount_(nodeCount)
{
    for (std::size_t i = 0; i < names.size(); ++i)
        addArray(i + 1, names[i]);
}

bool NodeVariables::areApart(int file)
{
    return ex_large_model(file) == 0 && !hasVariable(file, "vals_nod_var") &&
           hasVariable(file, arrayName(1));
}

void NodeVariables::addArray(std::size_t number, std::string const& name)
{
    int array = -1;
    check(nc_inq_varid(file_, arrayName(number).c_str(), &array));
    std::size_t const count = columnsOf(array);
    for (std::size_t column = 0; column < count; ++column) {
        names_.push_back(count == 1 ? name : name + endingOf(column, count));
        columns_.push_back({array, column});
    }
}

std::size_t NodeVariables::columnsOf(int array) const
{
    int axisCount = 0;
    check(nc_inq_varndims(file_, array, &axisCount));
    std::array<int, mostAxes> axes{};
    std::array<std::size_t, mostAxes> lengths = {0, 0, 1};
    bool const isKnown = axisCount == 2 || axisCount == static_cast<int>(mostAxes);
    if (isKnown)
        check(nc_inq_vardimid(file_, array, axes.data()));
    for (std::size_t i = 0; isKnown && i < static_cast<std::size_t>(axisCount); ++i)
        check(nc_inq_dimlen(file_, axes[i], &lengths[i]));
    constexpr std::size_t mostColumns = std::numeric_limits<std::int16_t>::max();
    if (lengths[1] != nodeCount_ || lengths[2] > mostColumns)
        throw Exchange::Error("The file is damaged: a variable at the nodes has not one row for "
                              "each of the " +
                              std::to_string(nodeCount_) + " nodes.");
    return lengths[2];
}

void NodeVariables::read(std::size_t step, std::size_t variable, Reals& values) const
{
    Column const& column = columns_[variable];
    std::array<std::size_t, mostAxes> const start = {step, 0, column.index};
    std::array<std::size_t, mostAxes> const count = {1, nodeCount_, 1};
    std::visit(
        [&](auto& list) {
            check(readValues(file_, column.array, start.data(), count.data(), list));
        },
        values);
}

} // namespace Exodus
