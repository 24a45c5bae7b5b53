#include "Results.h"

#include "exchange/NearestFloat.h"

#include <limits>

namespace Frd {

namespace {

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

} // namespace

Results::Results(ResultBlock const& block, std::size_t nodesOfMesh)
    : block_(block), storedComponents_(block.storedComponents().size()),
      places_(nodesOfMesh, nowhere)
{
    for (std::size_t i = 0; i < block.nodes.size(); ++i)
        places_[block.nodes[i]] = static_cast<std::uint32_t>(i);
}

template <typename Value, typename Convert>
std::vector<Value> Results::valuesAt(std::vector<std::uint32_t> const& nodes,
                                     std::vector<std::size_t> const& components,
                                     Convert const& convert) const
{
    std::vector<Value> values;
    values.reserve(nodes.size() * components.size());
    for (std::uint32_t const node : nodes) {
        std::uint32_t const place = places_[node];
        for (std::size_t const component : components)
            values.push_back(place == nowhere
                                 ? std::numeric_limits<Value>::quiet_NaN()
                                 : convert(block_.values[place * storedComponents_ + component]));
    }
    return values;
}

Exchange::Field Results::field(ResultLayout const& layout, std::size_t part,
                               std::vector<std::uint32_t> const& nodes) const
{
    Exchange::Field field;
    field.name = layout.name;
    field.part = part;
    field.components = layout.components.size();
    if (block_.holdsDoubles)
        field.values = valuesAt<double>(nodes, layout.components, [](double v) { return v; });
    else
        field.values = valuesAt<float>(nodes, layout.components, Exchange::nearestFloat);
    return field;
}

} // namespace Frd
