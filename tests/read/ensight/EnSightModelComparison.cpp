#include "EnSightModelComparison.h"

#include <read/ensight/EnSightMesh.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <stdexcept>

namespace {

using Nodes = EnSightModel::Nodes;
using Places = std::vector<std::size_t>;
using Reals = EnSightModel::Reals;

/// Where VTK has the nodes of elements in another order. It turns wedges over, and has the middle
/// of a line last.
std::map<std::string, Places> const& placesOfGold()
{
    static std::map<std::string, Places> const places = {
        {"bar3", {0, 2, 1}},
        {"penta6", {0, 2, 1, 3, 5, 4}},
        {"penta15", {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13}}};
    return places;
}

/// Before Gold, VTK leaves out nodes that are in the middle of an edge.
std::map<std::string, Places> const& placesOfOld()
{
    static std::map<std::string, Places> const places = {{"bar3", {0, 2}},
                                                         {"tria6", {0, 1, 2}},
                                                         {"quad8", {0, 1, 2, 3}},
                                                         {"tetra10", {0, 1, 2, 3}},
                                                         {"pyramid13", {0, 1, 2, 3, 4}},
                                                         {"penta6", {0, 2, 1, 3, 5, 4}},
                                                         {"penta15", {0, 2, 1, 3, 5, 4}},
                                                         {"hexa20", {0, 1, 2, 3, 4, 5, 6, 7}}};
    return places;
}

/// Of polygons in texts, VTK has the nodes in reverse order.
Places placesOf(EnSightModel const& model, std::string const& type, std::size_t nodeCount)
{
    std::map<std::string, Places> const& others = model.isGold ? placesOfGold() : placesOfOld();
    if (auto const known = others.find(type); known != others.end())
        return known->second;
    Places places(nodeCount);
    if (type == "nsided" && model.format == EnSightModel::Format::Text)
        std::iota(places.rbegin(), places.rend(), std::size_t{0});
    else
        std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

/// A blanked node takes away the cells around it. In uniform and rectilinear parts, VTK takes no
/// notice of it.
bool isShown(EnSightModel::Part const& part, std::size_t element)
{
    if (part.blankingMarks.empty() || !part.kind.empty())
        return true;
    Nodes const nodes = part.cells()[element];
    return std::all_of(nodes.begin(), nodes.end(), [&](int node) {
        return part.blankingMarks[static_cast<std::size_t>(node) - 1] != 0;
    });
}

std::string typeOf(EnSightModel const& model, std::string const& type)
{
    static std::map<std::string, std::string> const names = {
        {"point", "Point"},     {"bar", "Line"},        {"tria", "Triangle"},
        {"quad", "Quadrangle"}, {"nsided", "Polygon"},  {"tetra", "Tetrahedron"},
        {"penta", "Wedge"},     {"hexa", "Hexahedron"}, {"pyramid", "Pyramid"}};
    std::size_t const digits = std::min(type.find_first_of("0123456789"), type.size());
    bool const isSecondOrder = model.isGold && VtkRead::EnSightMesh::hasMidSideNodes(type);
    return names.at(type.substr(0, digits)) +
           (isSecondOrder ? " " + type.substr(digits) : std::string());
}

std::string typeOfCell(Nodes const& nodes)
{
    static std::map<std::size_t, std::string> const names = {
        {2, "Line"}, {4, "Quadrangle"}, {8, "Hexahedron"}};
    return names.at(nodes.size());
}

std::vector<std::string> typesOf(EnSightModel const& model, EnSightModel::Part const& part)
{
    std::vector<std::string> types(part.isMeasured ? part.nodeCount : 0, "Point");
    std::vector<Nodes> const cells = part.isStructured ? part.cells() : std::vector<Nodes>();
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (isShown(part, i))
            types.push_back(typeOfCell(cells[i]));
    for (EnSightModel::Elements const& elements : part.elements)
        types.insert(types.end(), elements.nodes.size(), typeOf(model, elements.type));
    return types;
}

/// Rows of values of elements.
Reals shownRows(EnSightModel::Part const& part, Reals const& values)
{
    Reals shown;
    std::size_t const columns = values.size() / part.elementCount();
    for (std::size_t i = 0; i < values.size(); ++i)
        if (isShown(part, i / columns))
            shown.push_back(values[i]);
    return shown;
}

std::vector<std::uint32_t> connectivityOf(EnSightModel const& model, EnSightModel::Part const& part)
{
    std::vector<std::uint32_t> connectivity;
    if (part.isMeasured) {
        connectivity.resize(part.nodeCount);
        std::iota(connectivity.begin(), connectivity.end(), std::uint32_t{0});
    }
    std::vector<Nodes> const cells = part.isStructured ? part.cells() : std::vector<Nodes>();
    for (std::size_t i = 0; i < cells.size(); ++i)
        for (int const node : cells[i])
            if (isShown(part, i))
                connectivity.push_back(static_cast<std::uint32_t>(node - 1));
    for (EnSightModel::Elements const& elements : part.elements)
        for (Nodes const& nodes : elements.nodes)
            for (std::size_t const place : placesOf(model, elements.type, nodes.size()))
                connectivity.push_back(static_cast<std::uint32_t>(nodes[place] - 1));
    return connectivity;
}

/// A file has xx, yy, zz, xy, xz, yz; a model has yz before xz.
std::size_t componentInFile(std::size_t component, std::size_t components)
{
    static constexpr std::array<std::size_t, 6> ofSymmetric = {0, 1, 2, 3, 5, 4};
    return components == ofSymmetric.size() ? ofSymmetric[component] : component;
}

/// Complex numbers come as two components, complex vectors as two variables.
std::vector<EnSightModel::Variable> asRead(EnSightModel::Variable const& variable)
{
    if (!variable.isComplex)
        return {variable};
    if (variable.components == 1) {
        EnSightModel::Variable numbers = variable;
        numbers.components = variable.columns();
        return {numbers};
    }
    return variable.halves("_r", "_i");
}

bool isSame(float one, float other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

class Comparison
{
public:
    Comparison(OpenedFile const& file, EnSightModel const& model) : file_(file), model_(model) {}

    void run() const
    {
        require(file_.parts.size(), model_.parts.size(), "parts");
        require(file_.steps.size(), model_.stepCount, "steps");
        for (std::size_t i = 0; i < model_.parts.size(); ++i)
            comparePart(file_.parts[i], model_.parts[i]);
        for (std::size_t step = 0; step < model_.stepCount; ++step)
            for (std::size_t part = 0; part < model_.parts.size(); ++part)
                compareStep(step, part);
    }

private:
    template <typename Value>
    static void require(Value const& is, Value const& expected, std::string const& what)
    {
        if (is != expected)
            throw std::runtime_error(what + ": " + printed(is) + ", not " + printed(expected));
    }

    static std::string printed(std::string const& text) { return "'" + text + "'"; }
    static std::string printed(std::size_t number) { return std::to_string(number); }

    static std::string printed(float number) { return std::to_string(number); }
    static std::string printed(double number) { return std::to_string(number); }
    static std::string printed(std::uint32_t number) { return std::to_string(number); }

    template <typename Value>
    static std::string printed(std::vector<Value> const& values)
    {
        std::string text;
        for (Value const& value : values)
            text += printed(value) + " ";
        return text;
    }

    static std::vector<std::string> typesOf(Exchange::Part const& part)
    {
        std::vector<std::string> types;
        for (Exchange::ElementType const* const type : part.types)
            types.push_back(type->name);
        return types;
    }

    void comparePart(Exchange::Part const& is, EnSightModel::Part const& expected) const
    {
        std::string const of = " of part " + std::to_string(expected.number);
        Reals const& coordinates = expected.coordinates.front();
        require(is.name, expected.name, "name" + of);
        require(is.coordinates, {coordinates.begin(), coordinates.end()}, "coordinates" + of);
        require(typesOf(is), ::typesOf(model_, expected), "elements" + of);
        require(is.connectivity, connectivityOf(model_, expected), "connectivity" + of);
    }

    void compareStep(std::size_t step, std::size_t part) const
    {
        Exchange::Field const* const moved = fieldOf("Coordinates", step, part);
        Reals const& coordinates = model_.parts[part].coordinates[step];
        require(moved == nullptr ? file_.parts[part].coordinates
                                 : std::get<std::vector<double>>(moved->values),
                {coordinates.begin(), coordinates.end()},
                "coordinates in step " + std::to_string(step) + " of part " +
                    std::to_string(model_.parts[part].number));
        for (EnSightModel::Variable const& variable : model_.variables)
            for (EnSightModel::Variable const& expected : asRead(variable))
                compareValues(expected, step, part);
    }

    Exchange::Field const* fieldOf(std::string const& name, std::size_t step,
                                   std::size_t part) const
    {
        for (Exchange::Field const& field : file_.fields.at(step))
            if (field.name == name && field.part == part)
                return &field;
        return nullptr;
    }

    void compareValues(EnSightModel::Variable const& variable, std::size_t step,
                       std::size_t part) const
    {
        Exchange::Field const* const field = fieldOf(variable.name, step, part);
        Reals expected = variable.values[step][part];
        if (variable.isPerElement && !expected.empty())
            expected = shownRows(model_.parts[part], expected);
        std::string const of = " of " + variable.name + " in step " + std::to_string(step) +
                               " of part " + std::to_string(model_.parts[part].number);
        if (field == nullptr)
            return require(std::size_t{0}, expected.size(), "values" + of);
        Reals const& values = std::get<Reals>(field->values);
        if (expected.empty())
            expected.assign(values.size(), std::numeric_limits<float>::quiet_NaN());
        require(values.size(), expected.size(), "values" + of);
        require<std::string>(locationOf(*field), variable.isPerElement ? "elements" : "nodes",
                             "location" + of);
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::size_t const component = i % variable.components;
            float const value =
                expected[i - component + componentInFile(component, variable.components)];
            if (!isSame(values[i], value))
                require(values[i], value, "value " + std::to_string(i) + of);
        }
    }

    static std::string locationOf(Exchange::Field const& field)
    {
        return field.location == Exchange::Location::Elements ? "elements" : "nodes";
    }

    OpenedFile const& file_;
    EnSightModel const& model_;
};

} // namespace

std::string differenceOf(OpenedFile const& file, EnSightModel const& model)
{
    try {
        Comparison(file, model).run();
    } catch (std::runtime_error const& difference) {
        return difference.what();
    }
    return {};
}
