#ifndef READ_VTK_SOURCEATTRIBUTES_H
#define READ_VTK_SOURCEATTRIBUTES_H

#include "Blocks.h"

#include <exchange/Attribute.h>
#include <exchange/Report.h>

#include <optional>
#include <vector>

class vtkDataObject;

namespace VtkRead {

/// The time that an object says it is of, in any of its blocks.
std::optional<double> timeIn(vtkDataObject* object);

/// Single values and texts that belong to no point or cell, without the time. What isn't a single
/// value is left out with a warning.
Exchange::AttributeList attributesIn(vtkDataObject* object, Exchange::Report& report);

/// What the field data of a whole object and of its blocks say of a step. What they say differently
/// is left out with a warning.
Exchange::AttributeList stepAttributes(vtkDataObject* object, std::vector<Block> const& blocks,
                                       Exchange::Report& report);

} // namespace VtkRead

#endif
