#ifndef EXPORT_STRAIGHTLINES_H
#define EXPORT_STRAIGHTLINES_H

#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace Export {

/// A grid with its curved lines of three or four points in so many straight pieces, and the values
/// of points between them; the grid itself if it has none. VTK's filter for surfaces ends the
/// program when it meets such lines.
vtkSmartPointer<vtkUnstructuredGrid> withStraightLines(vtkUnstructuredGrid& grid,
                                                       int piecesPerLine);

} // namespace Export

#endif
