#include "Results.h"

#include "Session.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace Gmsh {

namespace {

std::size_t rowCount(PartRows const& part, Exchange::Location location)
{
    return location == Exchange::Location::Nodes ? part.nodes.size() : part.elementCount;
}

std::size_t rowAt(PartRows const& part, Exchange::Location location, std::size_t index)
{
    return location == Exchange::Location::Nodes ? part.nodes[index] : part.firstElement + index;
}

/// The values of one part; nothing when it has none.
std::optional<Exchange::Field> fieldOf(ViewData const& data, PartRows const& part,
                                       std::vector<std::uint32_t> const& places)
{
    std::size_t const rows = rowCount(part, data.location);
    std::vector<double> values(rows * data.components, std::numeric_limits<double>::quiet_NaN());
    bool hasValues = false;
    for (std::size_t i = 0; i < rows; ++i) {
        std::uint32_t const place = places[rowAt(part, data.location, i)];
        if (place == TagIndex::none)
            continue;
        hasValues = true;
        std::copy_n(&data.values[place * data.components], data.components,
                    &values[i * data.components]);
    }
    if (!hasValues)
        return std::nullopt;
    Exchange::Field field;
    field.name = data.name;
    field.location = data.location;
    field.components = data.components;
    field.values = std::move(values);
    return field;
}

} // namespace

Results::Results(Exchange::Report& report) : report_(report)
{
    Session::call([this] { views_ = std::make_unique<Views const>(report_); });
}

Exchange::StepInfo Results::step(std::size_t index) const
{
    return {"Step " + std::to_string(index + 1), views_->steps()[index].time, {}};
}

void Results::readStep(std::size_t index, MeshRows const& rows, FieldVisitor const& visit) const
{
    for (Views::Place const& place : views_->steps()[index].places) {
        ViewData data;
        Session::call([&] { data = Views::read(place); });
        visitParts(data, rows, visit);
    }
}

std::vector<std::uint32_t> Results::placesIn(ViewData const& data, MeshRows const& rows) const
{
    bool const isOnNodes = data.location == Exchange::Location::Nodes;
    TagIndex const& index = isOnNodes ? rows.nodes : rows.elements;
    std::vector<std::uint32_t> places(isOnNodes ? rows.nodeCount : rows.elementCount,
                                      TagIndex::none);
    bool isComplete = true;
    for (std::size_t i = 0; i < data.tags.size(); ++i) {
        std::uint32_t const row = index.rowOf(data.tags[i]);
        if (row == TagIndex::none)
            isComplete = false;
        else
            places[row] = static_cast<std::uint32_t>(i);
    }
    if (!isComplete)
        report_.warn("Values of '" + data.name + "' on " + (isOnNodes ? "nodes" : "elements") +
                     " that the mesh does not have were left out.");
    return places;
}

void Results::visitParts(ViewData const& data, MeshRows const& rows,
                         FieldVisitor const& visit) const
{
    std::vector<std::uint32_t> const places = placesIn(data, rows);
    for (std::size_t p = 0; p < rows.parts.size(); ++p) {
        std::optional<Exchange::Field> field = fieldOf(data, rows.parts[p], places);
        if (!field)
            continue;
        field->part = p;
        visit(*field);
    }
}

} // namespace Gmsh
