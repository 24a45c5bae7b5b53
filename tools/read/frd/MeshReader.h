#ifndef READ_FRD_MESHREADER_H
#define READ_FRD_MESHREADER_H

#include "Header.h"
#include "Mesh.h"
#include "PartRows.h"

#include "exchange/Part.h"

#include <utility>
#include <vector>

namespace Frd {

/// Makes parts of a file's mesh, with the nodes of each element in a model's order. Coordinates
/// that the file does not hold as doubles are rounded to floats.
class MeshReader
{
public:
    MeshReader(Mesh const& mesh, Header const& header);

    /// The nodes of each part; which elements they have is not kept.
    std::vector<PartRows> takeRows() { return std::move(rows_); }
    std::vector<Exchange::Part> takeParts() { return std::move(parts_); }

private:
    std::vector<PartRows> rows_;
    std::vector<Exchange::Part> parts_;
};

} // namespace Frd

#endif
