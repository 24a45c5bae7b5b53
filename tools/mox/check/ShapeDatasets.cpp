#include "ShapeDatasets.h"

#include <algorithm>
#include <variant>

using MoxRead::Variable;

namespace Mox::Check {

namespace {

constexpr std::uint32_t coordinatesType = 1;
constexpr std::uint32_t lineConnectivityType = 4;
constexpr std::uint32_t solidConnectivityType = 6;
constexpr std::uint32_t polylengthType = 9;
constexpr std::uint32_t firstNodeType = 12;
constexpr std::uint32_t firstElementType = 16;
constexpr std::uint32_t lastElementType = 19;

template <typename Condition>
Variable const* pick(std::vector<Variable> const& candidates, char const* usualName,
                     Condition const& condition)
{
    Variable const* first = nullptr;
    for (Variable const& candidate : candidates) {
        if (candidate.hasStep() || !condition(candidate))
            continue;
        if (candidate.datasetName() == usualName)
            return &candidate;
        if (first == nullptr)
            first = &candidate;
    }
    return first;
}

// Nodes that move have coordinates for each step, and possibly no others.
Variable const* pickCoordinates(std::vector<Variable> const& candidates)
{
    Variable const* const constant = pick(candidates, "Coordinates", isCoordinates);
    if (constant != nullptr)
        return constant;
    auto const found = std::find_if(candidates.begin(), candidates.end(), isCoordinates);
    return found == candidates.end() ? nullptr : &*found;
}

} // namespace

ShapeDatasets::ShapeDatasets(MoxRead::Model const& model, MoxRead::Node const& geometryNode)
    : node(&geometryNode)
{
    std::vector<Variable> const& variables = geometryNode.geometry()->variables;
    coordinates = pickCoordinates(variables);
    connectivity = pick(variables, "Connectivity", isConnectivity);
    polylength = pick(variables, "Polylength", isPolylength);
    nodeIds = pick(variables, "Node Ids", isNodeIds);
    elementIds = pick(variables, "Element IDs", isElementIds);
    if (coordinates != nullptr)
        nodeCount = model.resolve(*coordinates).rows();
    if (polylength != nullptr)
        elementCount = model.resolve(*polylength).rows();
    else if (connectivity == nullptr)
        elementCount = 0;
}

bool isCoordinates(Variable const& variable)
{
    return variable.variableType() == coordinatesType;
}

bool isConnectivity(Variable const& variable)
{
    std::uint32_t const type = variable.variableType();
    return type >= lineConnectivityType && type <= solidConnectivityType &&
           variable.datasetName() != "Part Elements";
}

bool isPolylength(Variable const& variable)
{
    return variable.variableType() == polylengthType;
}

bool isNodeIds(Variable const& variable)
{
    return variable.variableType() == firstNodeType && variable.datasetName() == "Node Ids";
}

bool isElementIds(Variable const& variable)
{
    return variable.variableType() == firstElementType && variable.datasetName() == "Element IDs";
}

bool isConstant(Variable const& variable)
{
    return isConnectivity(variable) || isPolylength(variable) || isNodeIds(variable) ||
           isElementIds(variable);
}

bool isResultOnNodes(Variable const& variable)
{
    return variable.variableType() >= firstNodeType && variable.variableType() < firstElementType;
}

bool isResultOnElements(Variable const& variable)
{
    return variable.variableType() >= firstElementType &&
           variable.variableType() <= lastElementType;
}

int dimensionOf(Variable const& connectivity)
{
    return static_cast<int>(connectivity.variableType() - lineConnectivityType) + 1;
}

// A linked dataset has no attributes of its own.
std::string elementTypeOf(MoxRead::Model const& model, Variable const& connectivity)
{
    MoxRead::Attributes const& attributes = model.resolve(connectivity).attributes;
    auto const found = attributes.find("ElementType");
    if (found == attributes.end())
        return {};
    auto const* const text = std::get_if<std::string>(&found->second);
    return text == nullptr ? std::string() : *text;
}

} // namespace Mox::Check
