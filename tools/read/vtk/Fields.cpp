#include "Fields.h"

#include "Arrays.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataObjectTree.h>
#include <vtkDataObjectTreeIterator.h>
#include <vtkFieldData.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>

#include <limits>
#include <string>

namespace VtkRead {

namespace {

using Exchange::AttributeList;
using Exchange::Field;
using Exchange::Location;
using Exchange::Report;
using Exchange::RowSelection;

constexpr char const* timeName = "TimeValue";
/// A mark that the CGNS reader makes, not its file.
constexpr char const* patchMark = "ispatch";

std::string nameOf(vtkAbstractArray& array, int index)
{
    char const* const name = array.GetName();
    if (name == nullptr || *name == '\0')
        return "Array " + std::to_string(index + 1);
    return name;
}

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
        std::string const name = nameOf(array, i);
        if (!isResult(arrays, array, name))
            continue;
        if (auto* const numbers = vtkDataArray::SafeDownCast(&array))
            visit(fieldOf(arrays, *numbers, name, part));
        else
            report.warn("The array '" + name + "' holds no numbers and was left out.");
    }
}

std::optional<double> timeOf(vtkDataObject* object)
{
    vtkFieldData* const fields = object == nullptr ? nullptr : object->GetFieldData();
    vtkDataArray* const time = fields == nullptr ? nullptr : fields->GetArray(timeName);
    if (time == nullptr || time->GetNumberOfTuples() != 1 || time->GetNumberOfComponents() != 1)
        return {};
    return time->GetComponent(0, 0);
}

void addNumber(AttributeList& attributes, std::string const& name, vtkDataArray& array,
               Report& report)
{
    double const value = array.GetComponent(0, 0);
    bool const isInt = isIntegral(array) && value >= std::numeric_limits<int>::min() &&
                       value <= std::numeric_limits<int>::max();
    if (isInt)
        attributes.emplace_back(name, static_cast<int>(value));
    else
        attributes.emplace_back(name, report.narrow(value));
}

void addAttribute(AttributeList& attributes, std::string const& name, vtkAbstractArray& array,
                  Report& report)
{
    if (auto* const texts = vtkStringArray::SafeDownCast(&array))
        attributes.emplace_back(name, std::string(texts->GetValue(0)));
    else
        addNumber(attributes, name, *vtkDataArray::SafeDownCast(&array), report);
}

bool isSingleValue(vtkAbstractArray& array)
{
    bool const isKnown = vtkStringArray::SafeDownCast(&array) != nullptr ||
                         vtkDataArray::SafeDownCast(&array) != nullptr;
    return isKnown && array.GetNumberOfValues() == 1;
}

} // namespace

void visitFields(vtkDataSet& data, std::size_t part, KeptRows const& kept,
                 Exchange::Source::FieldVisitor const& visit, Report& report)
{
    visitArrays({*data.GetPointData(), pointIdArray(data), Location::Nodes, kept.points}, part,
                visit, report);
    visitArrays({*data.GetCellData(), cellIdArray(data), Location::Elements, kept.cells}, part,
                visit, report);
}

std::optional<double> timeIn(vtkDataObject* object)
{
    std::optional<double> time = timeOf(object);
    auto* const tree = vtkDataObjectTree::SafeDownCast(object);
    if (time || tree == nullptr)
        return time;
    vtkNew<vtkDataObjectTreeIterator> leaves;
    leaves->SetDataSet(tree);
    for (leaves->InitTraversal(); !time && !leaves->IsDoneWithTraversal(); leaves->GoToNextItem())
        time = timeOf(leaves->GetCurrentDataObject());
    return time;
}

AttributeList attributesIn(vtkDataObject* object, Report& report)
{
    AttributeList attributes;
    vtkFieldData* const fields = object == nullptr ? nullptr : object->GetFieldData();
    for (int i = 0; fields != nullptr && i < fields->GetNumberOfArrays(); ++i) {
        vtkAbstractArray& array = *fields->GetAbstractArray(i);
        std::string const name = nameOf(array, i);
        if (name == timeName || name == patchMark)
            continue;
        if (isSingleValue(array))
            addAttribute(attributes, name, array, report);
        else
            report.warn("The field data '" + name + "' is not a single value and was left out.");
    }
    return attributes;
}

} // namespace VtkRead
