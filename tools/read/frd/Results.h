#ifndef READ_FRD_RESULTS_H
#define READ_FRD_RESULTS_H

#include "ResultBlock.h"
#include "ResultLayout.h"

#include "exchange/Field.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Frd {

/// Makes fields of a result block, which must outlive this.
class Results
{
public:
    Results(ResultBlock const& block, std::size_t nodesOfMesh);

    /// What `layout` takes of the block, on some nodes of the mesh, which are those of `part`.
    /// Nodes that the block does not have get values that are not numbers.
    Exchange::Field field(ResultLayout const& layout, std::size_t part,
                          std::vector<std::uint32_t> const& nodes) const;

private:
    template <typename Value, typename Convert>
    std::vector<Value> valuesAt(std::vector<std::uint32_t> const& nodes,
                                std::vector<std::size_t> const& components,
                                Convert const& convert) const;

    ResultBlock const& block_;
    std::size_t storedComponents_;
    /// For each node of the mesh, where the block has it.
    std::vector<std::uint32_t> places_;
};

} // namespace Frd

#endif
