#ifndef READ_VTK_MESHREADER_H
#define READ_VTK_MESHREADER_H

#include "Blocks.h"

#include <exchange/Part.h>
#include <exchange/Report.h>
#include <exchange/RowSelection.h>

#include <cstdint>
#include <vector>

class vtkDataArray;
class vtkDataSetAttributes;

namespace VtkRead {

/// What of a block's points and cells a model gets: those that belong to another piece are left
/// out, so are cells that a model can't hold.
struct PartRows
{
    Exchange::RowSelection points;
    Exchange::RowSelection cells;
};

/// Whose order the points of a reader's cells are in.
enum class PointOrder
{
    Cell,
    Element
};

/// Nodes and elements of a block, without their fields. Raises `Exchange::Error` when its arrays
/// don't fit each other.
Exchange::Part readMesh(Block const& block, PartRows& kept, PointOrder order,
                        Exchange::Report& report);

/// x, y, z of some points.
std::vector<double> pointsOf(vtkDataSet& data, Exchange::RowSelection const& rows);

/// The array that holds numbers of the points or cells; null if there is none.
vtkDataArray* pointIdArray(vtkDataSet& data);
vtkDataArray* cellIdArray(vtkDataSet& data);

} // namespace VtkRead

#endif
