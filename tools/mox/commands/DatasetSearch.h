#ifndef MOX_COMMANDS_DATASETSEARCH_H
#define MOX_COMMANDS_DATASETSEARCH_H

#include "moxread/Model.h"

#include <optional>
#include <string>

namespace Mox {

/// The dataset of a node by name and step; without a step the one that belongs to none. Throws
/// std::runtime_error, which names the steps that there are, when the node has no such dataset.
MoxRead::Variable const& findDataset(MoxRead::Model const& model, MoxRead::Node const& geometry,
                                     std::string const& dataset,
                                     std::optional<std::string> const& step);

} // namespace Mox

#endif
