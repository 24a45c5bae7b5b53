#ifndef READ_VTK_RESULTS_H
#define READ_VTK_RESULTS_H

#include "MeshReader.h"

#include <exchange/Report.h>
#include <exchange/Source.h>

#include <cstddef>

namespace VtkRead {

/// Hands over the arrays on points and cells of a block, but for those that are no results: ids and
/// ghost marks. Arrays that aren't numbers are left out with a warning.
void visitFields(vtkDataSet& data, std::size_t part, PartRows const& kept,
                 Exchange::Source::FieldVisitor const& visit, Exchange::Report& report);

} // namespace VtkRead

#endif
