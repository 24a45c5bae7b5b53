#include "FieldWriter.h"

#include "Error.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <variant>

namespace Exchange {

namespace {

using Zyl2::Mox2::DatasetType;

constexpr std::size_t sixComponents = 6;

bool fitsUnsigned(std::int64_t value)
{
    return value >= 0 && value <= std::numeric_limits<std::uint32_t>::max();
}

bool allFitUnsigned(Field const& field)
{
    auto const* const values = std::get_if<std::vector<std::int64_t>>(&field.values);
    return values != nullptr && std::all_of(values->begin(), values->end(), fitsUnsigned);
}

DatasetType typeOnNodes(Field const& field, std::size_t width)
{
    if (width == 1)
        return DatasetType::Result10;
    if (width == 3)
        return DatasetType::Result11;
    bool const hasRotations = field.components == sixComponents && field.name == "Displacement";
    return hasRotations ? DatasetType::Displacement6 : DatasetType::Result13;
}

DatasetType typeOnElements(std::size_t width)
{
    if (width == 1)
        return DatasetType::Result14;
    return width == 3 ? DatasetType::Result15 : DatasetType::Result17;
}

DatasetType typeOf(Field const& field, std::size_t width)
{
    return field.location == Location::Nodes ? typeOnNodes(field, width) : typeOnElements(width);
}

std::size_t valueCount(Field const& field)
{
    return std::visit([](auto const& values) { return values.size(); }, field.values);
}

void check(WrittenPart const& part, Field const& field)
{
    bool const isOnNodes = field.location == Location::Nodes;
    if (field.movesNodes && field.components != 3)
        throw Error("The coordinates of '" + part.name + "' don't have three components.");
    std::size_t const rows = isOnNodes ? part.nodeCount : part.elementCount;
    if (valueCount(field) != rows * field.components)
        throw Error("The field '" + field.name + "' has " + std::to_string(valueCount(field)) +
                    " values for " + std::to_string(rows) + (isOnNodes ? " nodes" : " elements") +
                    " of '" + part.name + "'.");
}

RowSelection const& rowsOf(WrittenShape const& shape, Location location)
{
    return location == Location::Nodes ? shape.nodes : shape.elements;
}

/// Copies some components of some rows, each value converted.
template <typename From, typename To, typename Convert>
void gather(std::vector<From> const& values, std::size_t stored, RowSelection const& rows,
            std::vector<std::size_t> const& components, To* to, Convert const& convert)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        From const* const row = values.data() + rows[i] * stored;
        for (std::size_t const component : components)
            *to++ = convert(row[component]);
    }
}

void gatherFloats(Field const& field, RowSelection const& rows,
                  std::vector<std::size_t> const& components, float* to, Report& report)
{
    auto const narrow = [&report](auto value) { return report.narrow(static_cast<double>(value)); };
    auto const keep = [](float value) { return value; };
    if (auto const* const floats = std::get_if<std::vector<float>>(&field.values))
        gather(*floats, field.components, rows, components, to, keep);
    else if (auto const* const doubles = std::get_if<std::vector<double>>(&field.values))
        gather(*doubles, field.components, rows, components, to, narrow);
    else
        gather(std::get<std::vector<std::int64_t>>(field.values), field.components, rows,
               components, to, narrow);
}

void gatherUnsigned(Field const& field, RowSelection const& rows,
                    std::vector<std::size_t> const& components, unsigned int* to)
{
    gather(std::get<std::vector<std::int64_t>>(field.values), field.components, rows, components,
           to, [](std::int64_t value) { return static_cast<unsigned int>(value); });
}

} // namespace

void FieldWriter::startStep(Zyl2::Mox2::Step const& step)
{
    step_ = step;
    names_.startStep();
}

void FieldWriter::add(WrittenPart const& part, Field const& field)
{
    check(part, field);
    if (field.movesNodes) {
        addNodeCoordinates(part, field);
        return;
    }
    if (field.components == 0) {
        report_.warn("The field '" + field.name + "' has no components and was left out.");
        return;
    }
    ++count_;
    for (FieldLayout const& layout : layoutsOf(field))
        addLayout(part, field, layout);
}

void FieldWriter::addNodeCoordinates(WrittenPart const& part, Field const& field)
{
    std::vector<std::size_t> const axes = {0, 1, 2};
    for (WrittenShape const& shape : part.shapes)
        writer_.add<float>(
            {"Coordinates", DatasetType::Coordinates, shape.nodes.size(), axes.size(), shape.id},
            [&](float* to) { gatherFloats(field, shape.nodes, axes, to, report_); }, step_);
}

void FieldWriter::addLayout(WrittenPart const& part, Field const& field, FieldLayout const& layout)
{
    std::size_t const partIndex = field.part;
    std::string const name = names_.make(partIndex, field.location, layout.name, report_);
    std::size_t const width = layout.components.size();
    bool const isUnsigned = allFitUnsigned(field);
    for (WrittenShape const& shape : part.shapes) {
        RowSelection const& rows = rowsOf(shape, field.location);
        DatasetWriter::Target const target = {name, typeOf(field, width), rows.size(), width,
                                              shape.id};
        if (isUnsigned)
            writer_.add<unsigned int>(
                target,
                [&](unsigned int* to) { gatherUnsigned(field, rows, layout.components, to); },
                step_);
        else
            writer_.add<float>(
                target,
                [&](float* to) { gatherFloats(field, rows, layout.components, to, report_); },
                step_);
    }
}

} // namespace Exchange
