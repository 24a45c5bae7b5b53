#include "Annotations.h"

#include "XmlText.h"

#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkStringArray.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace Export {

namespace {

/// For each shape one text.
using Texts = std::vector<std::string>;
using TextTable = std::map<std::string, Texts>;

template <typename Number>
std::string numberText(Number value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::string textOf(std::string const& value)
{
    return xmlText(value);
}

std::string textOf(std::uint32_t value)
{
    return numberText(value);
}

std::string textOf(float value)
{
    return numberText(value);
}

std::string textOf(double value)
{
    return numberText(value);
}

std::string textOf(MoxRead::AttributeValue const& value)
{
    return std::visit([](auto const& held) { return textOf(held); }, value);
}

void addTexts(vtkFieldData& data, std::string const& name, Texts const& texts)
{
    vtkNew<vtkStringArray> array;
    array->SetName(xmlText(name).c_str());
    for (std::string const& text : texts)
        array->InsertNextValue(text);
    data.AddArray(array);
}

void addTable(vtkFieldData& data, TextTable const& table)
{
    for (auto const& [name, texts] : table)
        addTexts(data, name, texts);
}

// Names of the groups below the root, joined by slashes.
std::string pathOf(std::vector<MoxRead::Node const*> const& groups)
{
    std::string path;
    for (std::size_t i = 1; i < groups.size(); ++i)
        path += (i == 1 ? "" : "/") + groups[i]->name;
    return xmlText(path);
}

void addNames(vtkFieldData& data, Grid const& grid)
{
    Texts names;
    Texts groups;
    bool hasGroups = false;
    for (Placement const& placement : grid.placements()) {
        names.push_back(xmlText(placement.shape->name));
        groups.push_back(pathOf(placement.shape->groups));
        hasGroups = hasGroups || !groups.back().empty();
    }
    addTexts(data, "Shape Names", names);
    if (hasGroups)
        addTexts(data, "Shape Groups", groups);
}

template <typename Values>
void addMaterialArray(vtkFieldData& data, Grid const& grid, char const* name, int width,
                      Values const& valuesOf)
{
    vtkNew<vtkFloatArray> array;
    array->SetName(name);
    array->SetNumberOfComponents(width);
    for (Placement const& placement : grid.placements())
        array->InsertNextTuple(valuesOf(placement.shape->material.value_or(MoxRead::Material())));
    data.AddArray(array);
}

void addColors(vtkFieldData& data, Grid const& grid, char const* name,
               MoxRead::Color MoxRead::Material::*color)
{
    addMaterialArray(data, grid, name, 4, [color](MoxRead::Material const& material) {
        return (material.*color).data();
    });
}

void addNumbers(vtkFieldData& data, Grid const& grid, char const* name,
                float MoxRead::Material::*number)
{
    addMaterialArray(data, grid, name, 1,
                     [number](MoxRead::Material const& material) { return &(material.*number); });
}

void addMaterials(vtkFieldData& data, Grid const& grid)
{
    addColors(data, grid, "Diffuse Color", &MoxRead::Material::diffuse);
    addColors(data, grid, "Specular Color", &MoxRead::Material::specular);
    addColors(data, grid, "Emissive Color", &MoxRead::Material::emissive);
    addColors(data, grid, "Ambient Color", &MoxRead::Material::ambient);
    addNumbers(data, grid, "Transparency", &MoxRead::Material::transparency);
    addNumbers(data, grid, "Shininess", &MoxRead::Material::shininess);
}

TextTable attributesIn(Grid const& grid, std::string const& step)
{
    TextTable table;
    for (Placement const& placement : grid.placements()) {
        for (MoxRead::Variable const* variable : placement.shape->datasetsOf(step)) {
            for (auto const& [key, value] : variable->attributes) {
                Texts& texts = table["Dataset " + variable->datasetName() + ": " + key];
                texts.resize(grid.placements().size());
                texts[static_cast<std::size_t>(placement.index)] = textOf(value);
            }
        }
    }
    return table;
}

/// An attribute as long as all datasets that were met have the same value for it.
struct Agreement
{
    std::string text;
    std::size_t count = 0;
    bool isKept = true;
};

// Attributes that all datasets of the step have alike belong to the step.
std::map<std::string, std::string> commonAttributes(Grid const& grid, std::string const& step)
{
    std::map<std::string, Agreement> found;
    std::size_t datasets = 0;
    for (Placement const& placement : grid.placements()) {
        for (MoxRead::Variable const* variable : placement.shape->datasetsOf(step)) {
            // A link has none of its own.
            datasets += variable->linked ? 0U : 1U;
            for (auto const& [key, value] : variable->attributes) {
                Agreement& agreement = found.emplace(key, Agreement{textOf(value)}).first->second;
                agreement.isKept = agreement.isKept && agreement.text == textOf(value);
                ++agreement.count;
            }
        }
    }
    std::map<std::string, std::string> common;
    for (auto const& [key, agreement] : found)
        if (agreement.isKept && agreement.count == datasets)
            common.emplace(key, agreement.text);
    return common;
}

void addGroupAttributes(vtkFieldData& data, ModelShape const& shape)
{
    std::vector<MoxRead::Node const*> path;
    for (MoxRead::Node const* group : shape.groups) {
        path.push_back(group);
        std::string const prefix = path.size() == 1 ? "Root: " : "Group " + pathOf(path) + ": ";
        for (auto const& [key, value] : group->group()->attributes)
            addTexts(data, prefix + key, {textOf(value)});
    }
}

void addTime(vtkFieldData& data, double time)
{
    // The name under which VTK's readers look for it.
    vtkNew<vtkDoubleArray> array;
    array->SetName("TimeValue");
    array->InsertNextValue(time);
    data.AddArray(array);
}

bool belongsToCommon(std::string const& name, std::map<std::string, std::string> const& common)
{
    return std::any_of(common.begin(), common.end(), [&](auto const& entry) {
        std::string const ending = ": " + entry.first;
        return name.size() >= ending.size() &&
               name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
    });
}

} // namespace

Annotations::Annotations(Grid const& grid) : grid_(grid)
{
    addNames(*constant_, grid);
    addMaterials(*constant_, grid);
    for (Placement const& placement : grid.placements())
        addGroupAttributes(*constant_, *placement.shape);
    addTable(*constant_, attributesIn(grid, ""));
    grid.get()->GetFieldData()->ShallowCopy(constant_);
}

void Annotations::showStep(Step const& step)
{
    vtkFieldData& data = *grid_.get()->GetFieldData();
    data.ShallowCopy(constant_);
    if (step.name.empty())
        return;
    addTexts(data, "Step", {xmlText(step.name)});
    addTime(data, step.time);
    auto const common = commonAttributes(grid_, step.name);
    for (auto const& [key, text] : common)
        addTexts(data, "Step: " + key, {text});
    for (auto const& [name, texts] : attributesIn(grid_, step.name))
        if (!belongsToCommon(name, common))
            addTexts(data, name, texts);
}

} // namespace Export
