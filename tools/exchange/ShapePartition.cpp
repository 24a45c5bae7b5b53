#include "ShapePartition.h"

#include "Error.h"

#include <algorithm>
#include <map>
#include <utility>

namespace Exchange {

namespace {

/// Empty name for the types that dimension and number of nodes tell: these come first.
using Key = std::pair<std::string, int>;
using RowsByKey = std::map<Key, std::vector<std::uint32_t>>;

void require(bool condition, Part const& part, char const* what)
{
    if (!condition)
        throw Error("The part '" + part.name + "' is damaged: " + what + ".");
}

void checkSets(Part const& part, std::vector<NamedSet> const& sets, std::size_t count)
{
    for (NamedSet const& set : sets)
        for (std::uint32_t const row : set.rows)
            require(row < count, part, "a set refers to what is not there");
}

void checkElement(Part const& part, std::size_t element)
{
    ElementType const* const type = part.types[element];
    require(type != nullptr, part, "an element has no type");
    require(part.offsets[element] <= part.offsets[element + 1], part,
            "an element has less than no nodes");
    std::uint64_t const count = part.offsets[element + 1] - part.offsets[element];
    require(type->nodeCount == 0 || type->nodeCount == count, part,
            "an element has a wrong number of nodes");
}

void checkElements(Part const& part)
{
    if (part.types.empty()) {
        require(part.connectivity.empty(), part, "there are nodes of elements, but no elements");
        return;
    }
    require(part.offsets.size() == part.types.size() + 1 && part.offsets.front() == 0 &&
                part.offsets.back() == part.connectivity.size(),
            part, "the nodes of its elements are missing");
    for (std::size_t i = 0; i < part.types.size(); ++i)
        checkElement(part, i);
    std::size_t const nodeCount = part.nodeCount();
    for (std::uint32_t const node : part.connectivity)
        require(node < nodeCount, part, "an element refers to a node that is not there");
}

void check(Part const& part)
{
    require(part.coordinates.size() % 3 == 0, part, "a coordinate is missing");
    require(part.nodeIds.empty() || part.nodeIds.size() == part.nodeCount(), part,
            "not every node has a number");
    require(part.elementIds.empty() || part.elementIds.size() == part.elementCount(), part,
            "not every element has a number");
    checkElements(part);
    checkSets(part, part.nodeSets, part.nodeCount());
    checkSets(part, part.elementSets, part.elementCount());
}

Key keyOf(ElementType const& type)
{
    return {type.isToldByCount ? std::string() : type.name, type.dimension};
}

std::map<Key, std::size_t> countsByKey(Part const& part)
{
    std::map<ElementType const*, std::size_t> counts;
    for (ElementType const* const type : part.types)
        ++counts[type];
    std::map<Key, std::size_t> byKey;
    for (auto const& [type, count] : counts)
        byKey[keyOf(*type)] += count;
    return byKey;
}

RowsByKey elementsByKey(Part const& part)
{
    RowsByKey rows;
    std::map<ElementType const*, std::vector<std::uint32_t>*> byType;
    for (std::size_t i = 0; i < part.types.size(); ++i) {
        auto& place = byType[part.types[i]];
        if (place == nullptr)
            place = &rows[keyOf(*part.types[i])];
        place->push_back(static_cast<std::uint32_t>(i));
    }
    return rows;
}

void markNodes(Part const& part, RowSelection const& elements, std::vector<bool>& used)
{
    for (std::size_t i = 0; i < elements.size(); ++i) {
        std::size_t const element = elements[i];
        for (std::uint64_t n = part.offsets[element]; n < part.offsets[element + 1]; ++n)
            used[part.connectivity[n]] = true;
    }
}

RowSelection selected(std::vector<bool> const& marks, bool value)
{
    auto const count = static_cast<std::size_t>(std::count(marks.begin(), marks.end(), value));
    if (count == marks.size())
        return RowSelection(count);
    std::vector<std::uint32_t> rows;
    rows.reserve(count);
    for (std::size_t i = 0; i < marks.size(); ++i)
        if (marks[i] == value)
            rows.push_back(static_cast<std::uint32_t>(i));
    return RowSelection(std::move(rows));
}

std::string shapeName(Part const& part, Key const& key, std::size_t dimensions)
{
    if (!key.first.empty())
        return part.name + " " + key.first;
    return dimensions == 1 ? part.name : part.name + " " + std::to_string(key.second) + "D";
}

std::vector<Shape> shapesWithElements(Part const& part)
{
    std::map<Key, std::size_t> const counts = countsByKey(part);
    auto const dimensions = static_cast<std::size_t>(std::count_if(
        counts.begin(), counts.end(), [](auto const& entry) { return entry.first.first.empty(); }));
    RowsByKey rows;
    if (counts.size() > 1)
        rows = elementsByKey(part);
    std::vector<Shape> shapes;
    for (auto const& [key, count] : counts) {
        Shape shape;
        shape.name = shapeName(part, key, dimensions);
        shape.dimension = key.second;
        shape.type = ElementType::find(key.first);
        shape.elements =
            counts.size() == 1 ? RowSelection(count) : RowSelection(std::move(rows[key]));
        shapes.push_back(std::move(shape));
    }
    return shapes;
}

/// Returns which nodes are used by any of the shapes.
std::vector<bool> selectNodes(Part const& part, std::vector<Shape>& shapes)
{
    std::vector<bool> usedByAny(part.nodeCount());
    for (Shape& shape : shapes) {
        std::vector<bool> used(part.nodeCount());
        markNodes(part, shape.elements, used);
        shape.nodes = selected(used, true);
        for (std::size_t i = 0; i < used.size(); ++i)
            if (used[i])
                usedByAny[i] = true;
    }
    return usedByAny;
}

} // namespace

std::vector<Shape> partition(Part const& part)
{
    check(part);
    if (part.types.empty()) {
        Shape shape;
        shape.name = part.name;
        shape.nodes = RowSelection(part.nodeCount());
        return {shape};
    }
    std::vector<Shape> shapes = shapesWithElements(part);
    Shape rest;
    rest.name = part.name + " nodes without elements";
    rest.nodes = selected(selectNodes(part, shapes), false);
    if (rest.nodes.size() != 0)
        shapes.push_back(std::move(rest));
    return shapes;
}

} // namespace Exchange
