#include "GridFields.h"

#include "XmlText.h"
#include "moxread/Text.h"

#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkUnsignedIntArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace Export {

namespace {

constexpr std::uint32_t firstNodeType = 12;
constexpr std::uint32_t displacementType = 13;
constexpr std::uint32_t displacement6Type = 14;
constexpr std::uint32_t firstElementType = 16;
constexpr std::uint32_t lastElementType = 19;

bool isOnNodes(MoxRead::Variable const& variable)
{
    return variable.variableType() >= firstNodeType && variable.variableType() < firstElementType;
}

bool isOnElements(MoxRead::Variable const& variable)
{
    return variable.variableType() >= firstElementType &&
           variable.variableType() <= lastElementType;
}

std::uint32_t rowsFor(Placement const& placement, MoxRead::Variable const& variable)
{
    if (isOnNodes(variable))
        return placement.mesh.nodeCount;
    // In a shape without elements the points stand in for elements, but have no results.
    return placement.mesh.hasElements() ? placement.mesh.elementCount : 0;
}

template <typename ArrayT, typename Value>
vtkSmartPointer<vtkDataArray> newArray(int width, vtkIdType rows, Value fill)
{
    auto array = vtkSmartPointer<ArrayT>::New();
    array->SetNumberOfComponents(width);
    array->SetNumberOfTuples(rows);
    std::fill_n(array->GetPointer(0), width * rows, fill);
    return array;
}

vtkSmartPointer<vtkDataArray> newArray(MoxRead::Variable const& stored, vtkIdType rows)
{
    if (stored.elementType() == MoxRead::ElementType::Float)
        return newArray<vtkFloatArray>(stored.width, rows, std::numeric_limits<float>::quiet_NaN());
    return newArray<vtkUnsignedIntArray>(stored.width, rows, 0U);
}

bool canHold(vtkDataArray& array, MoxRead::Variable const& stored)
{
    int const type =
        stored.elementType() == MoxRead::ElementType::Float ? VTK_FLOAT : VTK_UNSIGNED_INT;
    return array.GetDataType() == type && array.GetNumberOfComponents() == stored.width;
}

void nameComponents(vtkDataArray& array, MoxRead::Variable const& variable)
{
    // Viewers take six components for those of a tensor unless told otherwise.
    constexpr std::array<char const*, 6> names = {"X", "Y", "Z", "RX", "RY", "RZ"};
    if (variable.variableType() != displacement6Type)
        return;
    for (std::size_t i = 0; i < names.size(); ++i)
        array.SetComponentName(static_cast<vtkIdType>(i), names[i]);
}

bool isDisplacement(MoxRead::Variable const& variable, MoxRead::Variable const& stored)
{
    std::uint32_t const type = variable.variableType();
    return (type == displacementType || type == displacement6Type) && stored.width >= 3 &&
           variable.datasetName() == "Displacement" &&
           stored.elementType() == MoxRead::ElementType::Float;
}

std::string arrayNameOf(MoxRead::Variable const& variable)
{
    std::string const name = xmlText(variable.datasetName());
    return name.empty() ? "Unnamed" : name;
}

void turn(float* values, std::size_t rows, std::size_t width, Transform const& transform)
{
    for (std::size_t row = 0; row < rows; ++row, values += width) {
        transform.applyToVector(values);
        if (width == 6)
            transform.applyToAngles(values + 3);
    }
}

void copyRows(vtkDataArray& array, std::int64_t firstRow, MoxRead::Dataset const& dataset)
{
    static_assert(sizeof(float) == sizeof(std::uint32_t) &&
                  sizeof(unsigned int) == sizeof(std::uint32_t));
    std::memcpy(array.GetVoidPointer(firstRow * dataset.width), dataset.words.data(),
                dataset.words.size() * sizeof(std::uint32_t));
}

std::string datasetOf(MoxRead::Variable const& variable, Placement const& placement)
{
    return "The dataset " + MoxRead::quoted(variable.datasetName()) + " of the shape " +
           MoxRead::quoted(placement.shape->name);
}

} // namespace

GridFields::GridFields(vtkUnstructuredGrid& grid, MoxRead::Model const& model, Warnings& warnings)
    : grid_(grid), model_(model), warnings_(warnings)
{}

void GridFields::planConstant(ReadPlan& plan, std::vector<Placement> const& placements)
{
    planAll(plan, placements, "");
}

void GridFields::planStep(ReadPlan& plan, std::vector<Placement> const& placements,
                          std::string const& step)
{
    dropStep();
    isPlanningStep_ = true;
    if (!step.empty())
        planAll(plan, placements, step);
}

void GridFields::planAll(ReadPlan& plan, std::vector<Placement> const& placements,
                         std::string const& step)
{
    for (Placement const& placement : placements) {
        if (placement.mesh.coordinates == nullptr)
            continue;
        for (MoxRead::Variable const* variable : placement.shape->datasetsOf(step))
            if (!isOfMesh(*variable) && fits(placement, *variable))
                planOne(plan, placement, *variable);
    }
}

void GridFields::planOne(ReadPlan& plan, Placement const& placement,
                         MoxRead::Variable const& variable)
{
    vtkDataArray* const array = arrayFor(placement, variable);
    std::int64_t const firstRow =
        isOnNodes(variable) ? placement.firstNode : placement.firstElement;
    bool const isTurned = isDisplacement(variable, model_.resolve(variable)) &&
                          !placement.shape->transform.isIdentity();
    Transform const* const transform = isTurned ? &placement.shape->transform : nullptr;
    plan.add(variable, [array, firstRow, transform](MoxRead::Dataset const& dataset) {
        copyRows(*array, firstRow, dataset);
        if (transform != nullptr)
            turn(static_cast<float*>(array->GetVoidPointer(firstRow * dataset.width)),
                 dataset.rows(), dataset.width, *transform);
    });
}

bool GridFields::fits(Placement const& placement, MoxRead::Variable const& variable)
{
    if (!isOnNodes(variable) && !isOnElements(variable)) {
        warnings_.add(datasetOf(variable, placement) + " is of variable type " +
                      std::to_string(variable.variableType()) +
                      ", which is neither on nodes nor on elements, and is left out.");
        return false;
    }
    std::uint32_t const rows = model_.resolve(variable).rows();
    std::uint32_t const expected = rowsFor(placement, variable);
    if (rows != expected) {
        warnings_.add(datasetOf(variable, placement) + " has " + std::to_string(rows) +
                      " rows for " + std::to_string(expected) +
                      (isOnNodes(variable) ? " nodes" : " elements") + " and is left out.");
        return false;
    }
    return true;
}

// Shapes may have datasets of one name that fit into no common array: they get arrays of their own.
vtkDataArray* GridFields::arrayFor(Placement const& placement, MoxRead::Variable const& variable)
{
    MoxRead::Variable const& stored = model_.resolve(variable);
    vtkDataSetAttributes* const data = dataFor(variable);
    std::string const wanted = arrayNameOf(variable);
    std::string name = wanted;
    for (int number = 2;; ++number) {
        vtkDataArray* array = data->GetArray(name.c_str());
        if (array == nullptr)
            array = addArray(variable, name);
        bool const isOfStep = stepArrays_.count({data, name}) > 0;
        if (isOfStep == isPlanningStep_ && canHold(*array, stored) &&
            filled_.emplace(array, placement.index).second)
            return array;
        name = wanted + " (" + std::to_string(number) + ")";
        warnings_.add("Some datasets " + MoxRead::quoted(wanted) +
                      " don't fit into one array, so that there is also " + MoxRead::quoted(name) +
                      ".");
    }
}

vtkDataSetAttributes* GridFields::dataFor(MoxRead::Variable const& variable) const
{
    if (isOnNodes(variable))
        return grid_.GetPointData();
    return grid_.GetCellData();
}

vtkDataArray* GridFields::addArray(MoxRead::Variable const& variable, std::string const& name)
{
    vtkDataSetAttributes* const data = dataFor(variable);
    vtkIdType const rows =
        isOnNodes(variable) ? grid_.GetNumberOfPoints() : grid_.GetNumberOfCells();
    vtkSmartPointer<vtkDataArray> const array = newArray(model_.resolve(variable), rows);
    array->SetName(name.c_str());
    nameComponents(*array, variable);
    data->AddArray(array);
    if (isPlanningStep_)
        stepArrays_.emplace(data, name);
    return array;
}

void GridFields::dropStep()
{
    for (auto const& [data, name] : stepArrays_) {
        vtkDataArray* const array = data->GetArray(name.c_str());
        filled_.erase(filled_.lower_bound({array, 0}),
                      filled_.upper_bound({array, std::numeric_limits<int>::max()}));
        data->RemoveArray(name.c_str());
    }
    stepArrays_.clear();
}

} // namespace Export
