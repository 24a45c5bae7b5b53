#include "MeshCheck.h"

#include "Kinds.h"

#include "moxread/LittleEndian.h"
#include "moxread/Text.h"

#include <algorithm>
#include <numeric>
#include <sstream>

using MoxRead::Dataset;
using MoxRead::ElementType;
using MoxRead::Variable;

namespace Mox::Check {

namespace {

std::string numberText(double value)
{
    std::ostringstream text;
    text.precision(4);
    text << value;
    return text.str();
}

char const* sizeName(ElementKind const& kind)
{
    return kind.dimension == 1 ? "length" : kind.dimension == 2 ? "area" : "volume";
}

bool isOf(Dataset const* values, ElementType type)
{
    return values != nullptr && values->elementType == type;
}

Point positionOf(Dataset const& coordinates, std::uint32_t row)
{
    std::uint32_t const* const words = coordinates.words.data() + std::size_t{row} * 3;
    Point point = {};
    std::transform(words, words + point.size(), point.begin(), [](std::uint32_t word) {
        return static_cast<double>(MoxRead::floatFromBits(word));
    });
    return point;
}

int dimensionIn(ShapeDatasets const& shape)
{
    return shape.connectivity == nullptr ? 0 : dimensionOf(*shape.connectivity);
}

std::string elementTypeIn(MoxRead::Model const& model, ShapeDatasets const& shape)
{
    return shape.connectivity == nullptr ? "" : elementTypeOf(model, *shape.connectivity);
}

} // namespace

MeshCheck::MeshCheck(MoxRead::Model const& model, ShapeDatasets const& shape,
                     MeshValues const& values, Findings& findings)
    : model_(model), shape_(shape), values_(values), findings_(findings),
      kinds_(dimensionIn(shape), elementTypeIn(model, shape))
{}

void MeshCheck::run()
{
    checkIds(shape_.nodeIds, values_.nodeIds);
    checkIds(shape_.elementIds, values_.elementIds);
    if (!areElementsReadable() || !isSumRight() || !isTypeKnown())
        return;
    used_.resize(shape_.nodeCount);
    checkElements();
    tellTallies();
    checkUse();
}

void MeshCheck::checkIds(Variable const* variable, Dataset const* ids)
{
    if (!isOf(ids, ElementType::Uint32))
        return;
    std::vector<std::uint32_t> sorted = ids->words;
    std::sort(sorted.begin(), sorted.end());
    auto const first = std::adjacent_find(sorted.begin(), sorted.end());
    if (first == sorted.end())
        return;
    std::uint32_t const id = *first;
    auto const row = std::find(ids->words.begin(), ids->words.end(), id);
    auto const next = std::find(row + 1, ids->words.end(), id);
    auto const distinct = std::unique(sorted.begin(), sorted.end()) - sorted.begin();
    std::size_t const others = sorted.size() - static_cast<std::size_t>(distinct) - 1;
    findings_.add(
        {&Kinds::idsNotUnique, shape_.node, variable, "each id once",
         "id " + std::to_string(id) + " in the rows " + std::to_string(row - ids->words.begin()) +
             " and " + std::to_string(next - ids->words.begin()) +
             (others == 0
                  ? ""
                  : ", and " + countText(others, "more row") + " with an id that stands before")});
}

bool MeshCheck::areElementsReadable() const
{
    return isOf(values_.connectivity, ElementType::Uint32) &&
           isOf(values_.polylength, ElementType::Uint32) && values_.coordinates != nullptr;
}

bool MeshCheck::isSumRight()
{
    std::vector<std::uint32_t> const& lengths = values_.polylength->words;
    std::uint64_t const sum = std::accumulate(lengths.begin(), lengths.end(), std::uint64_t{0});
    std::size_t const found = values_.connectivity->words.size();
    if (sum == found)
        return true;
    findings_.add({&Kinds::polylengthSum, shape_.node, shape_.connectivity,
                   countText(sum, "value") + ", the sum of the nodes of " +
                       countText(lengths.size(), "element") + " by Polylength",
                   countText(found, "value")});
    return false;
}

bool MeshCheck::isTypeKnown()
{
    if (kinds_.areKnown())
        return true;
    std::string const name = elementTypeIn(model_, shape_);
    findings_.add({&Kinds::elementType, shape_.node, shape_.connectivity,
                   "an attribute ElementType that names a type of elements of dimension " +
                       std::to_string(dimensionIn(shape_)),
                   MoxRead::quoted(name)});
    return false;
}

void MeshCheck::checkElements()
{
    std::uint32_t const* nodes = values_.connectivity->words.data();
    std::vector<std::uint32_t> const& lengths = values_.polylength->words;
    for (std::size_t row = 0; row < lengths.size(); ++row) {
        checkElement(row, nodes, lengths[row]);
        nodes += lengths[row];
    }
}

void MeshCheck::checkElement(std::size_t row, std::uint32_t const* nodes, std::uint32_t count)
{
    ElementKind const* const kind = kinds_.of(count);
    if (kind == nullptr) {
        std::string const type = elementTypeIn(model_, shape_);
        this->count(Kinds::elementType, row,
                    type.empty() ? "as many nodes as an element of dimension " +
                                       std::to_string(dimensionIn(shape_)) + " has"
                                 : "as many nodes as a " + type + " has",
                    countText(count, "node") + " in");
    }
    if (areNodesThere(row, nodes, count) && kind != nullptr &&
        isOf(values_.coordinates, ElementType::Float))
        checkSize(row, nodes, count, *kind);
}

bool MeshCheck::areNodesThere(std::size_t row, std::uint32_t const* nodes, std::uint32_t count)
{
    bool areThere = true;
    for (std::uint32_t const* node = nodes; node != nodes + count; ++node) {
        if (*node < shape_.nodeCount) {
            used_[*node] = true;
            continue;
        }
        if (areThere) {
            this->count(Kinds::nodeOutOfRange, row,
                        "nodes among the " + countText(shape_.nodeCount, "row") +
                            " of coordinates, counted from 0",
                        "node " + countText(*node) + " in");
        }
        areThere = false;
    }
    return areThere;
}

void MeshCheck::checkSize(std::size_t row, std::uint32_t const* nodes, std::uint32_t count,
                          ElementKind const& kind)
{
    positions_.clear();
    for (std::uint32_t i = 0; i < count; ++i)
        positions_.push_back(positionOf(*values_.coordinates, nodes[i]));
    ElementSize const size(kind, positions_);
    std::string const name = sizeName(kind);
    auto const found = [&](double value) {
        return name + " " + numberText(value) + " of the " + kind.name + " in";
    };
    if (size.isNegative())
        this->count(Kinds::negativeVolume, row, "elements of positive volume", found(size.value()));
    else if (size.isTwisted())
        this->count(Kinds::twistedElement, row, "elements whose sides and faces do not cross",
                    "parts that cancel each other to " + found(0));
    else if (size.isZero())
        this->count(kind.dimension == 1 ? Kinds::lengthOfZero : Kinds::sizeOfZero, row,
                    "no " + name + " of 0", found(0));
}

void MeshCheck::checkUse()
{
    auto const unused = static_cast<std::size_t>(std::count(used_.begin(), used_.end(), false));
    if (unused == 0)
        return;
    auto const first = std::find(used_.begin(), used_.end(), false) - used_.begin();
    findings_.add(
        {&Kinds::unusedNodes, shape_.node, shape_.coordinates,
         "elements at each of " + countText(used_.size(), "node"),
         countText(unused, "node") + " without; the first is in row " + std::to_string(first)});
}

void MeshCheck::count(Kind const& kind, std::size_t row, std::string const& expected,
                      std::string const& what)
{
    Tally& tally = tallies_[&kind];
    if (tally.count++ == 0) {
        tally.expected = expected;
        tally.first = what + " " + nameOf(row);
    }
}

std::string MeshCheck::nameOf(std::size_t row) const
{
    std::string const name = "element row " + std::to_string(row);
    bool const hasId =
        isOf(values_.elementIds, ElementType::Uint32) && row < values_.elementIds->words.size();
    return hasId ? name + " (id " + std::to_string(values_.elementIds->words[row]) + ")" : name;
}

void MeshCheck::tellTallies()
{
    for (auto const& [kind, tally] : tallies_) {
        std::string const others =
            tally.count == 1 ? ""
                             : ", the first of " + countText(tally.count) + " such among " +
                                   countText(*shape_.elementCount, "element");
        findings_.add(
            {kind, shape_.node, shape_.connectivity, tally.expected, tally.first + others});
    }
}

} // namespace Mox::Check
