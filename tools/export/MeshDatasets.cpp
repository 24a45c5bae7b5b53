#include "MeshDatasets.h"

#include "moxread/Text.h"

#include <algorithm>

namespace Export {

namespace {

constexpr std::uint32_t coordinatesType = 1;
constexpr std::uint32_t lineConnectivityType = 4;
constexpr std::uint32_t solidConnectivityType = 6;
constexpr std::uint32_t polylengthType = 9;

bool isConnectivity(MoxRead::Variable const& variable)
{
    std::uint32_t const type = variable.variableType();
    // This dataset has the layout of a connectivity, but names elements instead of nodes.
    bool const isOther = variable.datasetName() == "Part Elements";
    return type >= lineConnectivityType && type <= solidConnectivityType && !isOther;
}

bool isPolylength(MoxRead::Variable const& variable)
{
    return variable.variableType() == polylengthType;
}

// Hosts may give names of their own; the usual one is preferred.
template <typename Condition>
MoxRead::Variable const* pick(MoxRead::Model::Variables const& candidates, char const* usualName,
                              Condition const& condition)
{
    MoxRead::Variable const* first = nullptr;
    for (MoxRead::Variable const* candidate : candidates) {
        if (!condition(*candidate))
            continue;
        if (candidate->datasetName() == usualName)
            return candidate;
        if (first == nullptr)
            first = candidate;
    }
    return first;
}

// Nodes that move have coordinates for each step, and possibly no others.
MoxRead::Variable const* findCoordinates(ModelShape const& shape)
{
    MoxRead::Variable const* const constant =
        pick(shape.datasetsOf(""), "Coordinates", isCoordinates);
    if (constant != nullptr)
        return constant;
    auto const& variables = shape.geometry->variables;
    auto const found = std::find_if(variables.begin(), variables.end(), isCoordinates);
    return found == variables.end() ? nullptr : &*found;
}

bool isUsed(MoxRead::Variable const& variable, MeshDatasets const& mesh)
{
    return &variable == mesh.coordinates || &variable == mesh.connectivity ||
           &variable == mesh.polylength;
}

// Connectivity that can't be used has got a warning of its own.
bool isTold(MoxRead::Variable const& variable, MeshDatasets const& mesh)
{
    return isConnectivity(variable) && !mesh.hasElements();
}

void warnOfOthers(MeshDatasets const& mesh, ModelShape const& shape, Warnings& warnings)
{
    for (MoxRead::Variable const* variable : shape.datasetsOf("")) {
        if (isOfMesh(*variable) && !isUsed(*variable, mesh) && !isTold(*variable, mesh))
            warnings.add("The dataset " + MoxRead::quoted(variable->datasetName()) +
                         " of the shape " + MoxRead::quoted(shape.name) +
                         " has no place in a grid and is left out.");
    }
}

// A linked dataset has no attributes of its own.
std::string elementTypeOf(MoxRead::Variable const& connectivity, MoxRead::Model const& model)
{
    MoxRead::Attributes const& attributes = model.resolve(connectivity).attributes;
    auto const found = attributes.find("ElementType");
    if (found == attributes.end())
        return {};
    auto const* const text = std::get_if<std::string>(&found->second);
    return text == nullptr ? std::string() : *text;
}

void findElements(MeshDatasets& mesh, ModelShape const& shape, MoxRead::Model const& model,
                  Warnings& warnings)
{
    mesh.connectivity = pick(shape.datasetsOf(""), "Connectivity", isConnectivity);
    mesh.polylength = pick(shape.datasetsOf(""), "Polylength", isPolylength);
    bool const isWhole = mesh.connectivity != nullptr && mesh.polylength != nullptr;
    if (mesh.connectivity != nullptr && !isWhole)
        warnings.add("The shape " + MoxRead::quoted(shape.name) +
                     " does not say how many nodes its elements have: its nodes are shown as "
                     "points.");
    if (isWhole) {
        mesh.elementCount = model.resolve(*mesh.polylength).rows();
        mesh.entryCount = model.resolve(*mesh.connectivity).rows();
        mesh.elementType = elementTypeOf(*mesh.connectivity, model);
        return;
    }
    mesh.connectivity = nullptr;
    mesh.polylength = nullptr;
    mesh.elementCount = mesh.nodeCount;
    mesh.entryCount = mesh.nodeCount;
}

} // namespace

bool isCoordinates(MoxRead::Variable const& variable)
{
    return variable.variableType() == coordinatesType;
}

bool isOfMesh(MoxRead::Variable const& variable)
{
    return variable.variableType() <= polylengthType;
}

int MeshDatasets::dimension() const
{
    return static_cast<int>(connectivity->variableType() - lineConnectivityType) + 1;
}

MeshDatasets MeshDatasets::of(ModelShape const& shape, MoxRead::Model const& model,
                              Warnings& warnings)
{
    MeshDatasets mesh;
    mesh.coordinates = findCoordinates(shape);
    if (mesh.coordinates != nullptr) {
        mesh.nodeCount = model.resolve(*mesh.coordinates).rows();
        findElements(mesh, shape, model, warnings);
    } else if (!shape.geometry->variables.empty()) {
        warnings.add("The shape " + MoxRead::quoted(shape.name) +
                     " has no coordinates, so that nothing of it can be shown.");
    }
    if (mesh.coordinates != nullptr)
        warnOfOthers(mesh, shape, warnings);
    return mesh;
}

} // namespace Export
