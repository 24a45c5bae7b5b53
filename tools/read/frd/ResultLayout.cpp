#include "ResultLayout.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace Frd {

namespace {

/// Axes from 1 on: one of a vector's component, two of a tensor's.
using Place = std::vector<std::int64_t>;
using Places = std::vector<Place>;

Places const& vectorPlaces()
{
    static Places const places = {{1}, {2}, {3}};
    return places;
}

Places const& tensorPlaces()
{
    static Places const places = {{1, 1}, {2, 2}, {3, 3}, {1, 2}, {2, 3}, {3, 1}};
    return places;
}

/// A symmetric tensor's component may be named by either of its two places.
bool isSamePlace(Place const& a, Place const& b)
{
    return a == b || a == Place(b.rbegin(), b.rend());
}

/// Where each of `places` stands among `found`; empty when these are not exactly those places.
std::vector<std::size_t> orderOf(Places const& found, Places const& places)
{
    std::vector<std::size_t> order;
    for (Place const& place : places) {
        auto const at = std::find_if(found.begin(), found.end(), [&place](Place const& candidate) {
            return isSamePlace(candidate, place);
        });
        if (at != found.end())
            order.push_back(static_cast<std::size_t>(at - found.begin()));
    }
    bool const isComplete = order.size() == places.size() && found.size() == places.size();
    return isComplete ? order : std::vector<std::size_t>();
}

std::size_t commonPrefix(std::string const& a, std::string const& b)
{
    auto const length = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.begin() + length, b.begin()).first -
                                    a.begin());
}

std::size_t commonSuffix(std::string const& a, std::string const& b)
{
    return commonPrefix(std::string(a.rbegin(), a.rend()), std::string(b.rbegin(), b.rend()));
}

/// The axis that a letter or digit of a component's name means: X or 1, Y or 2, Z or 3; else 0.
std::int64_t axisOf(char letter)
{
    constexpr std::string_view axes = "XYZxyz123";
    auto const at = axes.find(letter);
    return at == std::string_view::npos ? 0 : static_cast<std::int64_t>(at % 3 + 1);
}

/// The axes that each component's name tells by the letters in which it differs from the others:
/// XX of SXX among SXX, SYY, ..., and 2 of dD2dRx among dD1dRx, dD2dRx, dD3dRx.
Places namedPlaces(std::vector<Component> const& components)
{
    std::string const& first = components.front().name;
    std::size_t prefix = first.size();
    std::size_t suffix = first.size();
    for (Component const& component : components) {
        prefix = std::min(prefix, commonPrefix(first, component.name));
        suffix = std::min(suffix, commonSuffix(first, component.name));
    }
    Places places;
    for (Component const& component : components) {
        std::size_t const end = std::max(prefix, component.name.size() - suffix);
        Place place;
        for (std::size_t i = prefix; i < end; ++i)
            place.push_back(axisOf(component.name[i]));
        places.push_back(place);
    }
    return places;
}

Places rowPlaces(std::vector<Component> const& components)
{
    Places places;
    for (Component const& component : components)
        places.push_back({component.row});
    return places;
}

bool areAllOf(std::int64_t entity, std::vector<Component> const& components)
{
    return std::all_of(components.begin(), components.end(),
                       [entity](Component const& component) { return component.entity == entity; });
}

/// The names decide, and where they do not tell axes, the rows do.
std::vector<std::size_t> vectorOrder(std::vector<Component> const& components)
{
    if (!areAllOf(Entity::vector, components))
        return {};
    auto const named = orderOf(namedPlaces(components), vectorPlaces());
    return named.empty() ? orderOf(rowPlaces(components), vectorPlaces()) : named;
}

/// The names alone decide: solvers give the rows and columns of a matrix to other results, too,
/// such as the openings, slips and pressures of contact.
std::vector<std::size_t> tensorOrder(std::vector<Component> const& components)
{
    if (!areAllOf(Entity::matrix, components))
        return {};
    return orderOf(namedPlaces(components), tensorPlaces());
}

std::vector<ResultLayout> scalars(std::string const& blockName,
                                  std::vector<Component> const& components)
{
    if (components.size() == 1)
        return {{blockName, {0}}};
    std::vector<ResultLayout> layouts;
    for (std::size_t i = 0; i < components.size(); ++i) {
        std::string const& given = components[i].name;
        std::string name = blockName;
        name.append(" ").append(given.empty() ? std::to_string(i + 1) : given);
        layouts.push_back({name, {i}});
    }
    return layouts;
}

} // namespace

std::vector<ResultLayout> layoutsOf(ResultBlock const& block)
{
    std::vector<Component> const components = block.storedComponents();
    auto const vector = vectorOrder(components);
    if (!vector.empty())
        return {{block.name == "DISP" ? "Displacement" : block.name, vector}};
    auto const tensor = tensorOrder(components);
    if (!tensor.empty())
        return {{block.name, tensor}};
    return scalars(block.name, components);
}

} // namespace Frd
