#ifndef READ_VTK_FIELDS_H
#define READ_VTK_FIELDS_H

#include "Mesh.h"

#include <exchange/Attribute.h>
#include <exchange/Report.h>
#include <exchange/Source.h>

#include <cstddef>
#include <optional>

class vtkDataObject;
class vtkFieldData;

namespace VtkRead {

/// Hands over the arrays on points and cells of a block, but for those that are no results: ids and
/// ghost marks. Arrays that aren't numbers are left out with a warning.
void visitFields(vtkDataSet& data, std::size_t part, KeptRows const& kept,
                 Exchange::Source::FieldVisitor const& visit, Exchange::Report& report);

/// The time that an object says it is of, in any of its blocks.
std::optional<double> timeIn(vtkDataObject* object);

/// Single values and texts that belong to no point or cell, without the time. What isn't a single
/// value is left out with a warning.
Exchange::AttributeList attributesIn(vtkDataObject* object, Exchange::Report& report);

} // namespace VtkRead

#endif
