#include "FieldLayout.h"

#include <cmath>
#include <numeric>
#include <type_traits>
#include <variant>

namespace Exchange {

namespace {

constexpr std::size_t matrixSize = 9;

template <typename T>
bool isNan([[maybe_unused]] T value)
{
    if constexpr (std::is_floating_point_v<T>)
        return std::isnan(value);
    else
        return false;
}

/// Whatever isn't a number counts as the same, though it is not even equal to itself.
template <typename T>
bool isSame(T a, T b)
{
    return a == b || (isNan(a) && isNan(b));
}

template <typename T>
bool isSymmetric(std::vector<T> const& values)
{
    for (std::size_t row = 0; row + matrixSize <= values.size(); row += matrixSize) {
        T const* const m = &values[row];
        if (!isSame(m[1], m[3]) || !isSame(m[2], m[6]) || !isSame(m[5], m[7]))
            return false;
    }
    return true;
}

bool isSymmetricMatrix(Field const& field)
{
    return field.components == matrixSize &&
           std::visit([](auto const& values) { return isSymmetric(values); }, field.values);
}

std::string componentName(Field const& field, std::size_t component)
{
    static std::vector<std::string> const ofMatrix = {"XX", "XY", "XZ", "YX", "YY",
                                                      "YZ", "ZX", "ZY", "ZZ"};
    if (component < field.componentNames.size() && !field.componentNames[component].empty())
        return field.componentNames[component];
    return field.components == matrixSize ? ofMatrix[component] : std::to_string(component + 1);
}

std::vector<FieldLayout> scalarsOf(Field const& field)
{
    std::vector<FieldLayout> layouts;
    for (std::size_t i = 0; i < field.components; ++i)
        layouts.push_back({field.name + " " + componentName(field, i), {i}});
    return layouts;
}

std::vector<FieldLayout> asItIs(Field const& field)
{
    std::vector<std::size_t> components(field.components);
    std::iota(components.begin(), components.end(), std::size_t(0));
    return {{field.name, components}};
}

} // namespace

std::vector<FieldLayout> layoutsOf(Field const& field)
{
    if (field.components == 1 || field.components == 3 || field.components == 6)
        return asItIs(field);
    if (isSymmetricMatrix(field))
        return {{field.name, {0, 4, 8, 1, 5, 6}}};
    return scalarsOf(field);
}

} // namespace Exchange
