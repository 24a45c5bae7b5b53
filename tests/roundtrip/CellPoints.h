#ifndef TESTS_ROUNDTRIP_CELLPOINTS_H
#define TESTS_ROUNDTRIP_CELLPOINTS_H

#include <vtkType.h>

#include <vector>

class vtkDataSet;

/// The points of a cell; those of pixels and voxels as quadrangles and hexahedra have them.
std::vector<vtkIdType> pointsOf(vtkDataSet& grid, vtkIdType cell);

#endif
