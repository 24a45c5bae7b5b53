#include "Results.h"

#include "Arrays.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>

#include <string>

namespace VtkRead {

namespace {

using Exchange::Field;
using Exchange::Location;
using Exchange::Report;
using Exchange::RowSelection;

std::vector<std::string> componentNames(vtkDataArray& array)
{
    std::vector<std::string> names;
    if (array.HasAComponentName())
        for (int i = 0; i < array.GetNumberOfComponents(); ++i) {
            char const* const name = array.GetComponentName(i);
            names.emplace_back(name == nullptr ? "" : name);
        }
    return names;
}

/// One kind of arrays of a block.
struct Arrays
{
    vtkDataSetAttributes& attributes;
    vtkDataArray* ids;
    Location location;
    RowSelection const& rows;
};

bool isResult(Arrays const& arrays, vtkAbstractArray& array, std::string const& name)
{
    return &array != arrays.ids && name != vtkDataSetAttributes::GhostArrayName();
}

Field fieldOf(Arrays const& arrays, vtkDataArray& array, std::string const& name, std::size_t part)
{
    Field field;
    field.name = name;
    field.part = part;
    field.location = arrays.location;
    field.components = static_cast<std::size_t>(array.GetNumberOfComponents());
    field.componentNames = componentNames(array);
    field.values = valuesOf(array, arrays.rows);
    return field;
}

void visitArrays(Arrays const& arrays, std::size_t part,
                 Exchange::Source::FieldVisitor const& visit, Report& report)
{
    for (int i = 0; i < arrays.attributes.GetNumberOfArrays(); ++i) {
        vtkAbstractArray& array = *arrays.attributes.GetAbstractArray(i);
        std::string const name = arrayName(array, i);
        if (!isResult(arrays, array, name))
            continue;
        if (auto* const numbers = vtkDataArray::SafeDownCast(&array))
            visit(fieldOf(arrays, *numbers, name, part));
        else
            report.warn("The array '" + name + "' holds no numbers and was left out.");
    }
}

} // namespace

void visitFields(vtkDataSet& data, std::size_t part, PartRows const& kept,
                 Exchange::Source::FieldVisitor const& visit, Report& report)
{
    visitArrays({*data.GetPointData(), pointIdArray(data), Location::Nodes, kept.points}, part,
                visit, report);
    visitArrays({*data.GetCellData(), cellIdArray(data), Location::Elements, kept.cells}, part,
                visit, report);
}

} // namespace VtkRead
