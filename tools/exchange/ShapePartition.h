#ifndef EXCHANGE_SHAPEPARTITION_H
#define EXCHANGE_SHAPEPARTITION_H

#include "ElementType.h"
#include "Part.h"
#include "RowSelection.h"

#include <string>
#include <vector>

namespace Exchange {

/// What of a part becomes one shape of a model.
struct Shape
{
    std::string name;
    /// 0 when it has no elements.
    int dimension = 0;
    /// Type of all its elements when dimension and number of nodes don't tell it; else null.
    ElementType const* type = nullptr;
    /// The shape's nodes and elements, as rows of the part.
    RowSelection nodes;
    RowSelection elements;
};

/// Splits a part into shapes: one for each dimension, one for each type that dimension and number
/// of nodes don't tell, and one for the nodes that no element uses. Each has the nodes it needs, in
/// the part's order. A part without elements is one shape.
///
/// Raises `Error` when the part's arrays don't fit each other.
std::vector<Shape> partition(Part const& part);

} // namespace Exchange

#endif
