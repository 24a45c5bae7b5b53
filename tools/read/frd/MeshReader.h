#ifndef READ_FRD_MESHREADER_H
#define READ_FRD_MESHREADER_H

#include "Mesh.h"
#include "PartRows.h"

#include "exchange/Part.h"

namespace Frd {

/// These nodes and elements as a part, with the nodes of each element in a model's order.
/// Coordinates that the file does not hold as doubles are rounded to floats.
Exchange::Part partOf(PartRows const& rows, Mesh const& mesh);

} // namespace Frd

#endif
