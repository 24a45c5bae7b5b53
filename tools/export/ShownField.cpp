#include "ShownField.h"

#include "Error.h"
#include "XmlText.h"
#include "moxread/Text.h"

#include <vtkCellData.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

namespace Export {

namespace {

constexpr char const* displacement = "Displacement";

using Row = double const*;
using Function = std::function<double(Row)>;

double length(Row row)
{
    return std::hypot(row[0], row[1], row[2]);
}

// Of a symmetric tensor: xx, yy, zz, xy, yz, zx.
double mises(Row row)
{
    double const normal =
        std::pow(row[0] - row[1], 2) + std::pow(row[1] - row[2], 2) + std::pow(row[2] - row[0], 2);
    double const shear = row[3] * row[3] + row[4] * row[4] + row[5] * row[5];
    return std::sqrt(normal / 2 + 3 * shear);
}

Function column(std::size_t index)
{
    return [index](Row row) { return row[index]; };
}

/// The components of a field of one width, the one that is shown by default first.
using Components = std::vector<std::pair<std::string, Function>>;

Components componentsOf(vtkDataArray& array)
{
    bool const isDisplacement6 = array.GetComponentName(0) != nullptr;
    if (array.GetNumberOfComponents() == 1)
        return {{"", column(0)}};
    if (array.GetNumberOfComponents() == 3 || isDisplacement6)
        return {{"magnitude", length}, {"x", column(0)}, {"y", column(1)}, {"z", column(2)}};
    return {{"mises", mises},  {"xx", column(0)}, {"yy", column(1)}, {"zz", column(2)},
            {"xy", column(3)}, {"yz", column(4)}, {"zx", column(5)}};
}

std::pair<std::string, Function> findComponent(vtkDataArray& array,
                                               std::optional<std::string> const& wanted)
{
    Components const components = componentsOf(array);
    if (!wanted)
        return components.front();
    auto const found = std::find_if(components.begin(), components.end(),
                                    [&](auto const& entry) { return entry.first == *wanted; });
    if (found == components.end())
        throw Error("The field " + MoxRead::quoted(array.GetName()) + " has no component " +
                    *wanted + ".");
    return *found;
}

bool isField(MoxRead::Variable const& variable)
{
    std::string const name = variable.datasetName();
    return !isOfMesh(variable) && name != "Node Ids" && name != "Element IDs";
}

std::optional<std::string> firstField(Grid const& grid, std::string const& step)
{
    vtkUnstructuredGrid& data = *grid.get();
    for (Placement const& placement : grid.placements()) {
        for (MoxRead::Variable const* variable : placement.shape->datasetsOf(step)) {
            std::string const name = xmlText(variable->datasetName());
            bool const isThere = data.GetPointData()->GetArray(name.c_str()) != nullptr ||
                                 data.GetCellData()->GetArray(name.c_str()) != nullptr;
            if (isField(*variable) && isThere)
                return name;
        }
    }
    return std::nullopt;
}

std::optional<std::string> defaultField(Grid const& grid, std::string const& step)
{
    if (grid.get()->GetPointData()->GetArray(displacement) != nullptr)
        return displacement;
    std::optional<std::string> const ofStep = firstField(grid, step);
    return ofStep ? ofStep : firstField(grid, "");
}

vtkDataArray* findArray(vtkUnstructuredGrid& grid, std::string const& name, bool& isOnNodes)
{
    std::string const arrayName = xmlText(name);
    vtkDataArray* const onNodes = grid.GetPointData()->GetArray(arrayName.c_str());
    isOnNodes = onNodes != nullptr;
    vtkDataArray* const found =
        isOnNodes ? onNodes : grid.GetCellData()->GetArray(arrayName.c_str());
    if (found == nullptr)
        throw Error("There is no field " + MoxRead::quoted(name) + " in this step.");
    return found;
}

void compute(ShownField& shown, vtkDataArray& array, Function const& function)
{
    shown.values = vtkSmartPointer<vtkFloatArray>::New();
    shown.values->SetName("Shown");
    shown.values->SetNumberOfValues(array.GetNumberOfTuples());
    shown.least = std::numeric_limits<double>::infinity();
    shown.greatest = -std::numeric_limits<double>::infinity();
    std::array<double, 9> row = {};
    for (vtkIdType i = 0; i < array.GetNumberOfTuples(); ++i) {
        array.GetTuple(i, row.data());
        double const value = function(row.data());
        shown.values->SetValue(i, static_cast<float>(value));
        if (std::isfinite(value)) {
            shown.least = std::min(shown.least, value);
            shown.greatest = std::max(shown.greatest, value);
        }
    }
    if (shown.least > shown.greatest)
        shown.least = shown.greatest = std::numeric_limits<double>::quiet_NaN();
}

} // namespace

std::optional<ShownField> findShownField(Grid const& grid, std::string const& step,
                                         std::optional<std::string> const& field,
                                         std::optional<std::string> const& component)
{
    std::optional<std::string> const name = field ? field : defaultField(grid, step);
    if (!name)
        return std::nullopt;
    ShownField shown;
    vtkDataArray& array = *findArray(*grid.get(), *name, shown.isOnNodes);
    auto const [componentName, function] = findComponent(array, component);
    shown.name = *name;
    shown.component = componentName;
    compute(shown, array, function);
    return shown;
}

} // namespace Export
