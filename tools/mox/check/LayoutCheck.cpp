#include "LayoutCheck.h"

#include "Kinds.h"

#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <map>

using MoxRead::ElementType;
using MoxRead::quoted;
using MoxRead::Variable;

namespace Mox::Check {

namespace {

char const* nameOf(ElementType type)
{
    return type == ElementType::Float ? "floats" : "unsigned integers";
}

bool isUsed(ShapeDatasets const& shape, Variable const& variable)
{
    return &variable == shape.coordinates || &variable == shape.connectivity ||
           &variable == shape.polylength;
}

std::string stepText(Variable const& variable)
{
    return variable.hasStep() ? " in step " + quoted(variable.stepName()) : " without step";
}

} // namespace

void LayoutCheck::run(ShapeDatasets const& shape)
{
    std::vector<Variable> const& variables = shape.node->geometry()->variables;
    if (variables.empty()) {
        findings_.add({&Kinds::noDatasets, shape.node, nullptr, "a mesh", "nothing"});
        return;
    }
    checkMesh(shape);
    for (Variable const& variable : variables) {
        checkNumbers(shape, variable);
        checkRows(shape, variable);
        checkPlace(shape, variable);
        if (variable.linked)
            checkLink(shape, variable);
    }
    checkLayouts(shape);
}

void LayoutCheck::checkMesh(ShapeDatasets const& shape)
{
    std::size_t const count = shape.node->geometry()->variables.size();
    if (shape.coordinates == nullptr) {
        findings_.add({&Kinds::noCoordinates, shape.node, nullptr, "a dataset of coordinates",
                       "none among " + countText(count, "dataset")});
    }
    if (shape.connectivity != nullptr && shape.polylength == nullptr) {
        findings_.add({&Kinds::noPolylength, shape.node, shape.connectivity,
                       "a dataset Polylength, which says how many nodes each element has", "none"});
    }
    if (shape.connectivity == nullptr && shape.polylength != nullptr) {
        findings_.add({&Kinds::noConnectivity, shape.node, shape.polylength,
                       "a dataset Connectivity, which says what nodes the elements have", "none"});
    }
}

void LayoutCheck::checkNumbers(ShapeDatasets const& shape, Variable const& variable)
{
    if (!isCoordinates(variable) && !isConstant(variable))
        return;
    ElementType const expected = isCoordinates(variable) ? ElementType::Float : ElementType::Uint32;
    ElementType const found = model_.resolve(variable).elementType();
    if (found != expected)
        findings_.add({&Kinds::numberType, shape.node, &variable, nameOf(expected), nameOf(found)});
}

void LayoutCheck::checkRows(ShapeDatasets const& shape, Variable const& variable)
{
    std::uint32_t const rows = model_.resolve(variable).rows();
    auto const expectRows = [&](std::uint32_t expected, char const* what) {
        if (rows != expected)
            findings_.add({&Kinds::rowCount, shape.node, &variable,
                           countText(expected, "row") + ", one for each " + what,
                           countText(rows, "row")});
    };
    bool const isOnNodes = isResultOnNodes(variable) || isCoordinates(variable);
    if (isOnNodes && shape.coordinates != nullptr)
        expectRows(shape.nodeCount, "node");
    if (isResultOnElements(variable) && shape.elementCount)
        expectRows(*shape.elementCount, "element");
}

void LayoutCheck::checkPlace(ShapeDatasets const& shape, Variable const& variable)
{
    if (isConstant(variable) && variable.hasStep()) {
        findings_.add({&Kinds::meshInStep, shape.node, &variable,
                       "no step, as meshes do not change", "a step"});
        return;
    }
    bool const isOfMesh =
        isCoordinates(variable) || isConnectivity(variable) || isPolylength(variable);
    if (isOfMesh && !variable.hasStep() && !isUsed(shape, variable))
        findings_.add({&Kinds::secondMesh, shape.node, &variable,
                       "one dataset of this kind in a shape",
                       "another one, which viewers leave out"});
}

// A writer links datasets of one call only, the later ones to the first, which has values of its
// own. When that one gets others later, all have those.
void LayoutCheck::checkLink(ShapeDatasets const& shape, Variable const& variable)
{
    Variable const& stored = model_.resolve(variable);
    if (variable.typeWord != stored.typeWord) {
        findings_.add({&Kinds::linkOfOtherType, shape.node, &variable,
                       "values of variable type " + std::to_string(variable.variableType()) + ", " +
                           nameOf(variable.elementType()),
                       "those of " + quoted(stored.datasetName()) + stepText(stored) +
                           ", of type " + std::to_string(stored.variableType()) + ", " +
                           nameOf(stored.elementType())});
    }
    Variable const& target = model_.variable(variable.link);
    if (target.linked) {
        // Made only where it is shown: where a tree is deep, paths are long.
        std::string const path =
            findings_.isListing(Kinds::linkToLink)
                ? MoxRead::NodePath::of(model_,
                                        MoxRead::ownerOf(model_, model_.node(variable.link.nodeId)))
                : std::string();
        findings_.add({&Kinds::linkToLink, shape.node, &variable,
                       "values as they were given for several shapes or steps",
                       "those that " + quoted(path) + " was given afterwards"});
    }
}

// Viewers know a result by its name in all steps.
void LayoutCheck::checkLayouts(ShapeDatasets const& shape)
{
    std::map<std::string, Variable const*> firsts;
    for (Variable const& variable : shape.node->geometry()->variables) {
        Variable const& first = *firsts.emplace(variable.datasetName(), &variable).first->second;
        if (variable.variableType() == first.variableType())
            continue;
        findings_.add({&Kinds::layoutChanges, shape.node, &variable,
                       "variable type " + std::to_string(first.variableType()) +
                           ", as the dataset of this name has" + stepText(first),
                       "variable type " + std::to_string(variable.variableType())});
    }
}

} // namespace Mox::Check
