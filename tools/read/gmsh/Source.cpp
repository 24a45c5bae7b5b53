#include "Source.h"

#include "FileEnds.h"
#include "MeshReader.h"

#include "exchange/Error.h"

#include <algorithm>
#include <limits>
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

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : report_(report), session_(path, report)
{
    Session::call([this] { views_ = std::make_unique<Views const>(report_); });
}

std::vector<Exchange::Part> Source::readParts()
{
    std::vector<Exchange::Part> parts;
    Session::call([&] {
        MeshReader reader(report_);
        rows_ = reader.takeRows();
        parts = reader.takeParts();
    });
    if (session_.nodesRead() > rows_->nodeCount)
        report_.warn("Nodes that no element uses (" +
                     std::to_string(session_.nodesRead() - rows_->nodeCount) +
                     ") were left out, because Gmsh drops them.");
    return parts;
}

Exchange::StepInfo Source::step(std::size_t index) const
{
    return {"Step " + std::to_string(index + 1), views_->steps()[index].time, {}};
}

void Source::readStep(std::size_t index, FieldVisitor const& visit)
{
    if (!rows_)
        readParts();
    for (Views::Place const& place : views_->steps()[index].places) {
        ViewData data;
        Session::call([&] { data = Views::read(place); });
        visitParts(data, visit);
    }
}

std::vector<std::uint32_t> Source::placesIn(ViewData const& data)
{
    bool const isOnNodes = data.location == Exchange::Location::Nodes;
    TagIndex const& index = isOnNodes ? rows_->nodes : rows_->elements;
    std::vector<std::uint32_t> places(isOnNodes ? rows_->nodeCount : rows_->elementCount,
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

void Source::visitParts(ViewData const& data, FieldVisitor const& visit)
{
    std::vector<std::uint32_t> const places = placesIn(data);
    for (std::size_t p = 0; p < rows_->parts.size(); ++p) {
        std::optional<Exchange::Field> field = fieldOf(data, rows_->parts[p], places);
        if (!field)
            continue;
        field->part = p;
        visit(*field);
    }
}

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    if (!hasBeginning(path))
        throw Exchange::Error("The file does not begin as a mesh of Gmsh does: with $MeshFormat.");
    if (!hasEnding(path))
        throw Exchange::Error("The file is cut off: its last section has no end.");
    return std::make_unique<Source>(path, report);
}

} // namespace Gmsh
