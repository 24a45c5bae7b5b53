#ifndef EXPORT_ELEMENTEDGES_H
#define EXPORT_ELEMENTEDGES_H

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

class vtkUnstructuredGrid;

namespace Export {

/// The edges of all elements, each once, as lines; curved ones in so many straight pieces.
vtkSmartPointer<vtkPolyData> elementEdges(vtkUnstructuredGrid& grid, int piecesPerEdge);

} // namespace Export

#endif
