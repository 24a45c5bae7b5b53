#include "BlockFields.h"

#include "exchange/NearestFloat.h"

#include <limits>

namespace Frd {

namespace {

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

} // namespace

BlockFields::BlockFields(ResultBlock const& block, std::size_t nodesOfMesh)
    : block_(block), storedComponents_(block.storedComponents().size()),
      places_(nodesOfMesh, nowhere)
{
    for (std::size_t i = 0; i < block.nodes.size(); ++i)
        places_[block.nodes[i]] = static_cast<std::uint32_t>(i);
}

Exchange::Field BlockFields::field(ResultLayout const& layout, std::size_t part,
                                   std::vector<std::uint32_t> const& nodes) const
{
    Exchange::Field field;
    field.name = layout.name;
    field.part = part;
    field.components = layout.components.size();
    field.values = valuesAt(nodes, layout.components);
    return field;
}

std::vector<float> BlockFields::valuesAt(std::vector<std::uint32_t> const& nodes,
                                         std::vector<std::size_t> const& components) const
{
    std::vector<float> values;
    values.reserve(nodes.size() * components.size());
    for (std::uint32_t const node : nodes) {
        std::uint32_t const place = places_[node];
        for (std::size_t const component : components)
            values.push_back(
                place == nowhere
                    ? std::numeric_limits<float>::quiet_NaN()
                    : Exchange::nearestFloat(block_.values[place * storedComponents_ + component]));
    }
    return values;
}

} // namespace Frd
