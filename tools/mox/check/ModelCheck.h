#ifndef MOX_CHECK_MODELCHECK_H
#define MOX_CHECK_MODELCHECK_H

#include "Findings.h"

#include "moxread/Model.h"

namespace Mox::Check {

/// Checks whether a model means something: all that this folder has a class for.
///
/// Results are in memory one at a time. Meshes are read several at once, as many as fit into an
/// amount of memory that does not depend on the model, but at least one: values of several shapes
/// lie in one block of the file, which is inflated as a whole.
Findings checkModel(MoxRead::Model& model, MoxRead::ProgressVisitor const& tell);

} // namespace Mox::Check

#endif
