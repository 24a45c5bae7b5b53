#include "ElementCells.h"

#include "Error.h"
#include "vtk/CellType.h"

#include <map>

namespace Export {

namespace {

using Exchange::ElementType;

/// Two types may be named as most are, too: by their number of nodes.
std::string const& ownName(std::string const& name)
{
    static std::map<std::string, std::string> const aliases = {
        {"Quadrangle 6", "Quadratic linear quad"}, {"Wedge 12", "Quadratic linear wedge"}};
    auto const found = aliases.find(name);
    return found == aliases.end() ? name : found->second;
}

/// The type that a model names where dimension and number of nodes don't tell it; null when there
/// is none, or none that VTK has.
ElementType const* findNamed(std::string const& name)
{
    ElementType const* const type = ElementType::find(ownName(name));
    bool const isNamed = type != nullptr && !type->isToldByCount;
    return isNamed && Vtk::CellType::of(*type) != nullptr ? type : nullptr;
}

std::string complaintAbout(std::string const& name)
{
    ElementType const* const type = ElementType::find(name);
    return type == nullptr || type->isToldByCount
               ? "The type of element \"" + name + "\" is unknown."
               : "VTK has no cell for elements of the type \"" + name + "\".";
}

std::string plural(std::uint32_t nodeCount)
{
    return std::to_string(nodeCount) + (nodeCount == 1 ? " node" : " nodes");
}

ElementType const& typeByCount(int dimension, std::uint32_t nodeCount)
{
    ElementType const* const type = ElementType::find(dimension, nodeCount);
    if (type == nullptr || Vtk::CellType::of(*type) == nullptr)
        throw Error("There is no type of element of dimension " + std::to_string(dimension) +
                    " with " + plural(nodeCount) + ".");
    return *type;
}

unsigned char numberOf(ElementType const& type)
{
    return static_cast<unsigned char>(Vtk::CellType::of(type)->number);
}

} // namespace

ElementCells::ElementCells(int dimension, std::string const& elementType)
    : dimension_(dimension), elementType_(elementType)
{
    if (!elementType_.empty() && findNamed(elementType_) == nullptr)
        throw Error(complaintAbout(elementType_));
}

unsigned char ElementCells::of(std::uint32_t nodeCount)
{
    if (nodeCount == 0 || nodeCount != lastNodeCount_) {
        lastNumber_ = find(nodeCount);
        lastNodeCount_ = nodeCount;
    }
    return lastNumber_;
}

unsigned char ElementCells::find(std::uint32_t nodeCount) const
{
    if (elementType_.empty())
        return numberOf(typeByCount(dimension_, nodeCount));
    ElementType const& type = *findNamed(elementType_);
    bool const fits = type.nodeCount == 0 ? nodeCount > 0 : nodeCount == type.nodeCount;
    if (!fits)
        throw Error("A " + elementType_ + " can't have " + plural(nodeCount) + ".");
    return numberOf(type);
}

} // namespace Export
