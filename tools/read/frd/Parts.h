#ifndef READ_FRD_PARTS_H
#define READ_FRD_PARTS_H

#include "Mesh.h"
#include "ShapePartition.h"

#include "exchange/Part.h"

namespace Frd {

/// The shape as a part, with the nodes of each element in a model's order. Coordinates that the
/// file does not hold as doubles are rounded to floats.
Exchange::Part partOf(Shape const& shape, Mesh const& mesh);

} // namespace Frd

#endif
