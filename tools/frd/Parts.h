#ifndef FRD_PARTS_H
#define FRD_PARTS_H

#include "Mesh.h"
#include "ShapePartition.h"

#include "exchange/Part.h"

namespace Frd {

/// The shape as a part, single precision, with the nodes of each element in a model's order.
Exchange::Part partOf(Shape const& shape, Mesh const& mesh);

} // namespace Frd

#endif
