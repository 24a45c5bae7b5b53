#include "Comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace {

using Nodes = Model::Nodes;
using Reals = Model::Reals;
using Rows = std::vector<std::uint32_t>;
using Ids = std::vector<std::int64_t>;

/// What one part of the source is to be, in rows of a part of the model.
struct ExpectedPart
{
    std::string name;
    std::size_t part = 0;
    Rows nodes;
    Rows elements;
    std::vector<std::string> types;
    Rows connectivity;
};

std::string typeOf(std::string const& keyword)
{
    static std::map<std::string, std::string> const names = {
        {"point", "Point"},     {"bar", "Line"},        {"tria", "Triangle"},
        {"quad", "Quadrangle"}, {"nsided", "Polygon"},  {"tetra", "Tetrahedron"},
        {"penta", "Wedge"},     {"hexa", "Hexahedron"}, {"pyramid", "Pyramid"}};
    static std::array<std::string, 7> const ofSecondOrder = {
        "bar3", "tria6", "quad8", "tetra10", "pyramid13", "penta15", "hexa20"};
    std::size_t const digits = std::min(keyword.find_first_of("0123456789"), keyword.size());
    bool const isSecondOrder =
        std::find(ofSecondOrder.begin(), ofSecondOrder.end(), keyword) != ofSecondOrder.end();
    return names.at(keyword.substr(0, digits)) +
           (isSecondOrder ? " " + keyword.substr(digits) : std::string());
}

std::string typeOfCell(std::size_t corners)
{
    static std::map<std::size_t, std::string> const names = {
        {2, "Line"}, {4, "Quadrangle"}, {8, "Hexahedron"}};
    return names.at(corners);
}

Rows rowsFromZero(std::size_t count)
{
    Rows rows(count);
    std::iota(rows.begin(), rows.end(), std::uint32_t{0});
    return rows;
}

void addElement(ExpectedPart& expected, std::string const& type, Nodes nodes)
{
    // The middle of a line is between its ends, and behind them in a model.
    if (type == "Line 3")
        std::swap(nodes[1], nodes[2]);
    expected.types.push_back(type);
    for (int const node : nodes)
        expected.connectivity.push_back(static_cast<std::uint32_t>(node - 1));
}

ExpectedPart expectedOf(Model const& model, std::size_t index)
{
    Model::Part const& part = model.parts[index];
    ExpectedPart expected{part.name, index, rowsFromZero(part.nodeCount), {}, {}, {}};
    for (std::size_t i = 0; i < part.elementCount(); ++i)
        if (part.isKept(i))
            expected.elements.push_back(static_cast<std::uint32_t>(i));
    std::vector<Nodes> const cells = part.isStructured ? part.cells() : std::vector<Nodes>();
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (part.isKept(i))
            addElement(expected, typeOfCell(cells[i].size()), cells[i]);
    for (std::size_t i = 0; part.isMeasured && i < part.nodeCount; ++i)
        addElement(expected, "Point", {static_cast<int>(i) + 1});
    for (Model::Elements const& elements : part.elements)
        for (Nodes const& nodes : elements.nodes)
            if (elements.isKept())
                addElement(expected, typeOf(elements.type), nodes);
    return expected;
}

/// Leaves the part those of the shared nodes that its elements have.
void takeUsed(ExpectedPart& expected)
{
    Rows used = expected.connectivity;
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    for (std::uint32_t& node : expected.connectivity)
        node = static_cast<std::uint32_t>(std::find(used.begin(), used.end(), node) - used.begin());
    expected.nodes = used;
}

std::vector<ExpectedPart> expectedParts(Model const& model)
{
    std::vector<ExpectedPart> parts;
    std::optional<ExpectedPart> unused;
    for (std::size_t i = 0; i < model.parts.size(); ++i) {
        ExpectedPart part = expectedOf(model, i);
        if (model.sharesNodesOf(model.parts[i])) {
            if (!unused)
                unused = {"Nodes without elements", i, part.nodes, {}, {}, {}};
            takeUsed(part);
            Rows left;
            std::set_difference(unused->nodes.begin(), unused->nodes.end(), part.nodes.begin(),
                                part.nodes.end(), std::back_inserter(left));
            unused->nodes = left;
        }
        parts.push_back(part);
    }
    bool const hasMeasured = model.parts.back().isMeasured;
    if (unused && !unused->nodes.empty())
        parts.insert(parts.end() - (hasMeasured ? 1 : 0), *unused);
    return parts;
}

template <typename Value>
std::vector<Value> picked(std::vector<Value> const& values, std::size_t columns, Rows const& rows)
{
    std::vector<Value> result;
    for (std::uint32_t const row : rows)
        result.insert(result.end(), &values[row * columns], &values[row * columns] + columns);
    return result;
}

/// A file has xx, yy, zz, xy, xz, yz; a model has yz before xz.
Reals inOrderOfModel(Reals values, std::size_t components)
{
    constexpr std::size_t symmetric = 6;
    for (std::size_t i = 0; components == symmetric && i < values.size(); i += components)
        std::swap(values[i + 4], values[i + 5]);
    return values;
}

bool isSame(float one, float other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

std::string printed(std::string const& text)
{
    return "'" + text + "'";
}

template <typename Number>
std::string printed(Number number)
{
    return std::to_string(number);
}

template <typename Value>
std::string printed(std::vector<Value> const& values)
{
    std::string text;
    for (Value const& value : values)
        text += printed(value) + " ";
    return text;
}

template <typename Value>
void require(Value const& is, Value const& expected, std::string const& what)
{
    if (is != expected)
        throw std::runtime_error(what + ": " + printed(is) + ", not " + printed(expected));
}

class Comparison
{
public:
    Comparison(Support::SourceContent const& file, Model const& model)
        : file_(file), model_(model), parts_(expectedParts(model))
    {}

    void run() const
    {
        require(file_.parts.size(), parts_.size(), "parts");
        require(file_.steps.size(), model_.stepCount, "steps");
        for (std::size_t i = 0; i < parts_.size(); ++i)
            comparePart(file_.parts[i], parts_[i]);
        for (std::size_t step = 0; step < model_.stepCount; ++step) {
            compareAttributes(step);
            require(file_.fields[step].size(), fieldCount(step),
                    "fields in step " + std::to_string(step));
            for (std::size_t i = 0; i < parts_.size(); ++i)
                compareFields(step, i);
        }
        compareWarnings();
    }

private:
    void comparePart(Exchange::Part const& is, ExpectedPart const& expected) const
    {
        std::string const of = " of " + expected.name;
        Model::Part const& part = model_.parts[expected.part];
        std::vector<std::string> types;
        for (Exchange::ElementType const* const type : is.types)
            types.push_back(type->name);
        require(is.name, expected.name, "name");
        require(is.coordinates, coordinatesIn(firstStepOf(expected), expected), "coordinates" + of);
        require(types, expected.types, "elements" + of);
        require(is.connectivity, expected.connectivity, "connectivity" + of);
        require(is.nodeIds, nodeIds(part, expected), "node ids" + of);
        Ids ids;
        for (std::uint32_t const row : expected.elements)
            if (model_.elementIds == "given" && !part.isMeasured &&
                (!part.isStructured || part.hasIds))
                ids.push_back(Model::elementId(row));
        require(is.elementIds, ids, "element ids" + of);
    }

    Ids nodeIds(Model::Part const& part, ExpectedPart const& expected) const
    {
        bool const isGiven =
            part.isMeasured || (model_.nodeIds == "given" && (!part.isStructured || part.hasIds));
        Ids ids;
        for (std::uint32_t const row : expected.nodes)
            if (isGiven)
                ids.push_back(Model::nodeId(row, part.nodeCount));
            else if (model_.sharesNodesOf(part))
                ids.push_back(row + 1);
        return ids;
    }

    /// Of which the coordinates are those of the mesh.
    std::size_t firstStepOf(ExpectedPart const& expected) const
    {
        return model_.parts[expected.part].isMeasured ? 0 : model_.stepOfElements.value_or(0);
    }

    std::vector<double> coordinatesIn(std::size_t step, ExpectedPart const& expected) const
    {
        Reals const values =
            picked(model_.parts[expected.part].coordinates[step], axisCount, expected.nodes);
        return {values.begin(), values.end()};
    }

    void compareAttributes(std::size_t step) const
    {
        bool const hasTime = model_.layout != Model::Layout::OneStep;
        Exchange::StepInfo const& is = file_.steps[step];
        require(is.time.has_value(), hasTime, "has time");
        if (hasTime)
            require(*is.time, static_cast<double>(step) + 0.5, "time");
        Exchange::AttributeList const& attributes = hasTime ? is.attributes : file_.attributes;
        for (Model::Constant const& constant : model_.constants) {
            auto const& steps = model_.timeSets[constant.timeSet];
            auto const at = std::find(steps.begin(), steps.end(), step) - steps.begin();
            auto const index = constant.timeSet == 0 ? 0 : static_cast<std::size_t>(at);
            auto const found =
                std::find_if(attributes.begin(), attributes.end(),
                             [&](auto const& each) { return each.first == constant.name; });
            require(found != attributes.end(), index < constant.values.size(),
                    "has constant " + constant.name);
            if (found != attributes.end())
                require(std::get<float>(found->second), constant.values[index],
                        "constant " + constant.name);
        }
    }

    /// Complex ones are two variables.
    std::vector<Model::Variable> variables() const
    {
        std::vector<Model::Variable> variables;
        for (Model::Variable const& each : model_.variables) {
            auto const halves = each.isComplex ? each.halves("_r", "_i") : std::vector{each};
            variables.insert(variables.end(), halves.begin(), halves.end());
        }
        return variables;
    }

    Reals expectedValues(Model::Variable const& variable, std::size_t step,
                         ExpectedPart const& part) const
    {
        Reals const& all = variable.values[step][part.part];
        if (all.empty())
            return {};
        return inOrderOfModel(
            picked(all, variable.components, variable.isPerElement ? part.elements : part.nodes),
            variable.components);
    }

    bool isMoved(std::size_t step, ExpectedPart const& part) const
    {
        return coordinatesIn(step, part) != coordinatesIn(firstStepOf(part), part);
    }

    std::size_t fieldCount(std::size_t step) const
    {
        std::size_t count = 0;
        for (ExpectedPart const& part : parts_) {
            count += isMoved(step, part) ? 1 : 0;
            for (Model::Variable const& variable : variables())
                count += expectedValues(variable, step, part).empty() ? 0 : 1;
        }
        return count;
    }

    void compareFields(std::size_t step, std::size_t index) const
    {
        ExpectedPart const& part = parts_[index];
        std::string const at = " in step " + std::to_string(step) + " of " + part.name;
        if (isMoved(step, part))
            require(file_.values(step, "Coordinates", index), coordinatesIn(step, part),
                    "coordinates" + at);
        for (Model::Variable const& variable : variables())
            if (Reals const expected = expectedValues(variable, step, part); !expected.empty())
                compareValues(file_.find(step, variable.name, index), variable, expected, at);
    }

    static void compareValues(Exchange::Field const* field, Model::Variable const& variable,
                              Reals const& expected, std::string const& at)
    {
        if (field == nullptr)
            throw std::runtime_error("no " + variable.name + at);
        auto const& values = std::get<Reals>(field->values);
        require(field->components, variable.components, "components of " + variable.name);
        require(field->location == Exchange::Location::Elements, variable.isPerElement,
                "location of " + variable.name);
        require(values.size(), expected.size(), "values of " + variable.name + at);
        for (std::size_t i = 0; i < values.size(); ++i)
            if (!isSame(values[i], expected[i]))
                require(values[i], expected[i],
                        "value " + std::to_string(i) + " of " + variable.name + at);
    }

    /// What is left out is told of.
    void compareWarnings() const
    {
        std::size_t expected = 0;
        std::size_t told = 0;
        for (Model::Part const& part : model_.parts)
            for (std::size_t i = 0; i < part.elementCount(); ++i)
                expected += part.isKept(i) ? 0 : 1;
        for (std::string const& warning : file_.warnings())
            if (warning.find(" left out.") != std::string::npos)
                told += std::stoul(warning);
        require(told, expected, "elements that were left out");
    }

    Support::SourceContent const& file_;
    Model const& model_;
    std::vector<ExpectedPart> parts_;
};

} // namespace

std::string differenceOf(Support::SourceContent const& file, Model const& model)
{
    try {
        Comparison(file, model).run();
    } catch (std::runtime_error const& difference) {
        return difference.what();
    }
    return {};
}
