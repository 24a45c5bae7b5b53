#ifndef READ_VTK_STEPATTRIBUTES_H
#define READ_VTK_STEPATTRIBUTES_H

#include "Blocks.h"

#include <exchange/Attribute.h>
#include <exchange/Report.h>

#include <vector>

class vtkDataObject;

namespace VtkRead {

/// What the field data of a whole object and of its blocks say of a step. What they say differently
/// is left out with a warning.
Exchange::AttributeList stepAttributes(vtkDataObject* object, std::vector<Block> const& blocks,
                                       Exchange::Report& report);

} // namespace VtkRead

#endif
