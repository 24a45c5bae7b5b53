#include "ResultLayout.h"

#include <algorithm>
#include <utility>

namespace Frd {

namespace {

using Place = std::pair<std::int64_t, std::int64_t>;

/// A symmetric tensor's component may be named by either of its two places; ZX stands for both
/// itself and XZ, the others for the places above the diagonal.
Place tensorPlace(Component const& component)
{
    Place const place(component.row, component.column);
    Place const mirrored(component.column, component.row);
    Place const corner(3, 1);
    if (place == corner || mirrored == corner)
        return corner;
    return std::min(place, mirrored);
}

Place placeOf(Component const& component)
{
    bool const isVector = component.entity == Entity::vector;
    return isVector ? Place(component.row, 0) : tensorPlace(component);
}

/// Where each of `places` stands among components that are all of `entity`; empty when they are not
/// exactly those places.
std::vector<std::size_t> findPlaces(std::vector<Component> const& components, std::int64_t entity,
                                    std::vector<Place> const& places)
{
    std::vector<std::size_t> order;
    for (Place const& place : places) {
        auto const found =
            std::find_if(components.begin(), components.end(), [&](Component const& component) {
                return component.entity == entity && placeOf(component) == place;
            });
        if (found != components.end())
            order.push_back(static_cast<std::size_t>(found - components.begin()));
    }
    bool const isComplete = order.size() == places.size() && components.size() == places.size();
    return isComplete ? order : std::vector<std::size_t>();
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
    auto const vector = findPlaces(components, Entity::vector, {{1, 0}, {2, 0}, {3, 0}});
    if (!vector.empty() && block.name == "DISP")
        return {{"Displacement", vector}};
    if (!vector.empty())
        return {{block.name, vector}};
    auto const tensor =
        findPlaces(components, Entity::matrix, {{1, 1}, {2, 2}, {3, 3}, {1, 2}, {2, 3}, {3, 1}});
    if (!tensor.empty())
        return {{block.name, tensor}};
    return scalars(block.name, components);
}

} // namespace Frd
