#include "Arrays.h"

#include <vtkArrayDispatch.h>
#include <vtkDataArray.h>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <variant>

namespace VtkRead {

namespace {

using Values = decltype(Exchange::Field::values);

template <typename To, typename Array>
std::vector<To> gather(Array& array, Exchange::RowSelection const& rows)
{
    int const components = array.GetNumberOfComponents();
    std::vector<To> values;
    values.reserve(rows.size() * static_cast<std::size_t>(components));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (int c = 0; c < components; ++c)
            values.push_back(
                static_cast<To>(array.GetTypedComponent(static_cast<vtkIdType>(rows[i]), c)));
    return values;
}

template <typename Array>
bool exceedsSigned(Array& array)
{
    for (vtkIdType i = 0; i < array.GetNumberOfValues(); ++i)
        if (array.GetValue(i) >
            static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return true;
    return false;
}

/// Called with the array in its own type.
struct Gatherer
{
    Exchange::RowSelection const& rows;
    Values values;

    template <typename Array>
    void operator()(Array* array)
    {
        using T = typename Array::ValueType;
        if constexpr (std::is_floating_point_v<T>)
            values = gather<T>(*array, rows);
        else
            gatherIntegers(*array);
    }

    template <typename Array>
    void gatherIntegers(Array& array)
    {
        using T = typename Array::ValueType;
        if constexpr (std::is_unsigned_v<T> && sizeof(T) == sizeof(std::int64_t))
            if (exceedsSigned(array)) {
                values = gather<double>(array, rows);
                return;
            }
        values = gather<std::int64_t>(array, rows);
    }
};

/// Arrays of bits, and any that aren't laid out in memory, are known by their doubles only.
struct DoubleView
{
    vtkDataArray& array;
    // NOLINTBEGIN(readability-identifier-naming): named as in the arrays that VTK lays out
    int GetNumberOfComponents() const { return array.GetNumberOfComponents(); }
    double GetTypedComponent(vtkIdType row, int component) const
    {
        return array.GetComponent(row, component);
    }
    // NOLINTEND(readability-identifier-naming)
};

Values valuesThroughDoubles(vtkDataArray& array, Exchange::RowSelection const& rows)
{
    DoubleView view{array};
    if (array.GetDataType() == VTK_BIT)
        return gather<std::int64_t>(view, rows);
    return gather<double>(view, rows);
}

} // namespace

std::string arrayName(vtkAbstractArray& array, int index)
{
    char const* const name = array.GetName();
    if (name == nullptr || *name == '\0')
        return "Array " + std::to_string(index + 1);
    return name;
}

Values valuesOf(vtkDataArray& array, Exchange::RowSelection const& rows)
{
    Gatherer gatherer{rows, {}};
    if (vtkArrayDispatch::Dispatch::Execute(&array, gatherer))
        return std::move(gatherer.values);
    return valuesThroughDoubles(array, rows);
}

bool isIntegral(vtkDataArray& array)
{
    return array.GetDataType() != VTK_FLOAT && array.GetDataType() != VTK_DOUBLE;
}

bool isIdArray(vtkDataArray& array)
{
    return isIntegral(array) && array.GetNumberOfComponents() == 1;
}

std::vector<std::int64_t> idsOf(vtkDataArray& array, Exchange::RowSelection const& rows)
{
    Values values = valuesOf(array, rows);
    if (auto* const integers = std::get_if<std::vector<std::int64_t>>(&values))
        return std::move(*integers);
    // Ids that no model can hold make the writer number the rows itself.
    return std::vector<std::int64_t>(rows.size(), std::numeric_limits<std::int64_t>::max());
}

std::vector<double> coordinatesOf(vtkDataArray& array, Exchange::RowSelection const& rows)
{
    return std::visit(
        [](auto const& values) { return std::vector<double>(values.begin(), values.end()); },
        valuesOf(array, rows));
}

} // namespace VtkRead
