#include "MeshReader.h"

#include "Arrays.h"
#include "Cells.h"
#include "Topology.h"

#include <exchange/Error.h>

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataSetAttributes.h>
#include <vtkPointData.h>
#include <vtkPointSet.h>
#include <vtkPoints.h>
#include <vtkUnsignedCharArray.h>

#include <limits>
#include <map>
#include <utility>

namespace VtkRead {

namespace {

using Exchange::Error;
using Exchange::Part;
using Exchange::Report;
using Exchange::RowSelection;

constexpr unsigned char foreignCell =
    vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::REFINEDCELL;
constexpr unsigned char foreignPoint = vtkDataSetAttributes::DUPLICATEPOINT;

vtkDataArray* idArray(vtkDataSetAttributes& attributes, char const* name)
{
    for (vtkDataArray* const array : {attributes.GetArray(name), attributes.GetGlobalIds(),
                                      vtkDataArray::SafeDownCast(attributes.GetAbstractAttribute(
                                          vtkDataSetAttributes::PEDIGREEIDS))})
        if (array != nullptr && isIdArray(*array))
            return array;
    return nullptr;
}

RowSelection selectionOf(std::vector<bool> const& isKept)
{
    std::vector<std::uint32_t> rows;
    for (std::size_t i = 0; i < isKept.size(); ++i)
        if (isKept[i])
            rows.push_back(static_cast<std::uint32_t>(i));
    return rows.size() == isKept.size() ? RowSelection(rows.size()) : RowSelection(std::move(rows));
}

/// Makes the elements of a part out of the cells of a block.
class ElementBuilder
{
public:
    ElementBuilder(Part& part, vtkDataSet& data, PointOrder order)
        : part_(part), data_(data), order_(order), pointCount_(data.GetNumberOfPoints()),
          ghosts_(data.GetCellGhostArray()),
          isKept_(static_cast<std::size_t>(data.GetNumberOfCells()))
    {
        part_.offsets = {0};
    }

    void build(Report& report)
    {
        part_.types.reserve(isKept_.size());
        part_.offsets.reserve(isKept_.size() + 1);
        visitCells(data_, [this](int type, vtkIdType count, vtkIdType const* points) {
            add(type, count, points);
        });
        for (auto const& [name, count] : unknown_)
            report.unknownElements(name, count);
    }

    RowSelection kept() const { return selectionOf(isKept_); }

private:
    void add(int cellType, vtkIdType count, vtkIdType const* points)
    {
        std::size_t const cell = cell_++;
        if (isForeign(cell))
            return;
        auto const pointCount = static_cast<std::size_t>(count);
        Topology const& mapped = mappingOf(cellType, pointCount);
        if (mapped.type == nullptr || pointCount == 0 || isUneven(cell, cellType)) {
            ++unknown_[cellTypeName(pointCount == 0 ? VTK_EMPTY_CELL : cellType, pointCount)];
            return;
        }
        if (mapped.type->nodeCount != 0 && mapped.type->nodeCount != pointCount)
            throw Error("Cell " + std::to_string(cell) + " of '" + part_.name + "' has " +
                        std::to_string(count) + " points, too many or too few for its type.");
        isKept_[cell] = true;
        addElement(mapped, pointCount, points);
    }

    void addElement(Topology const& mapped, std::size_t count, vtkIdType const* points)
    {
        for (std::size_t i = 0; i < count; ++i)
            part_.connectivity.push_back(
                checked(points[mapped.order.empty() ? i : mapped.order[i]]));
        part_.types.push_back(mapped.type);
        part_.offsets.push_back(part_.connectivity.size());
    }

    std::uint32_t checked(vtkIdType point) const
    {
        if (point < 0 || point >= pointCount_)
            throw Error("A cell of '" + part_.name + "' has a point that is not there.");
        return static_cast<std::uint32_t>(point);
    }

    /// Wedges of the same number of points may have other degrees along their height.
    bool isUneven(std::size_t cell, int cellType) const
    {
        vtkDataArray* const degrees = data_.GetCellData()->GetHigherOrderDegrees();
        if (cellType != VTK_LAGRANGE_WEDGE || degrees == nullptr)
            return false;
        auto const row = static_cast<vtkIdType>(cell);
        return degrees->GetComponent(row, 0) != degrees->GetComponent(row, 2);
    }

    bool isForeign(std::size_t cell) const
    {
        return ghosts_ != nullptr &&
               (ghosts_->GetValue(static_cast<vtkIdType>(cell)) & foreignCell) != 0;
    }

    Topology const& mappingOf(int cellType, std::size_t count)
    {
        if (cellType != lastType_ || count != lastCount_) {
            last_ = topologyOf(cellType, count);
            if (order_ == PointOrder::Element)
                last_.order.clear();
            lastType_ = cellType;
            lastCount_ = count;
        }
        return last_;
    }

    Part& part_;
    vtkDataSet& data_;
    PointOrder order_;
    vtkIdType pointCount_;
    vtkUnsignedCharArray* ghosts_;
    std::vector<bool> isKept_;
    std::map<std::string, std::size_t> unknown_;
    std::size_t cell_ = 0;
    Topology last_;
    int lastType_ = -1;
    std::size_t lastCount_ = 0;
};

/// Points of another piece stay where a cell that is kept needs them.
RowSelection keptPoints(Part const& part, vtkDataSet& data)
{
    auto const count = static_cast<std::size_t>(data.GetNumberOfPoints());
    vtkUnsignedCharArray* const ghosts = data.GetPointGhostArray();
    if (ghosts == nullptr)
        return RowSelection(count);
    std::vector<bool> isKept(count);
    for (std::size_t i = 0; i < count; ++i)
        isKept[i] = (ghosts->GetValue(static_cast<vtkIdType>(i)) & foreignPoint) == 0;
    for (std::uint32_t const point : part.connectivity)
        isKept[point] = true;
    return selectionOf(isKept);
}

void renumber(Part& part, RowSelection const& points, std::size_t pointCount)
{
    if (points.isAll())
        return;
    std::vector<std::uint32_t> rows(pointCount);
    for (std::size_t i = 0; i < points.size(); ++i)
        rows[points[i]] = static_cast<std::uint32_t>(i);
    for (std::uint32_t& point : part.connectivity)
        point = rows[point];
}

void checkSize(vtkAbstractArray& array, vtkIdType rows, Part const& part, char const* ofWhat)
{
    if (array.GetNumberOfTuples() != rows)
        throw Error("'" + std::string(array.GetName() == nullptr ? "An array" : array.GetName()) +
                    "' has " + std::to_string(array.GetNumberOfTuples()) + " values for " +
                    std::to_string(rows) + " " + ofWhat + " of '" + part.name + "'.");
}

void checkSizes(vtkDataSetAttributes& attributes, vtkIdType rows, Part const& part,
                char const* ofWhat)
{
    for (int i = 0; i < attributes.GetNumberOfArrays(); ++i)
        checkSize(*attributes.GetAbstractArray(i), rows, part, ofWhat);
}

void check(vtkDataSet& data, Part const& part)
{
    constexpr vtkIdType most = std::numeric_limits<std::uint32_t>::max();
    if (data.GetNumberOfPoints() > most || data.GetNumberOfCells() > most)
        throw Error("'" + part.name + "' has more points or cells than a model can count.");
    checkSizes(*data.GetPointData(), data.GetNumberOfPoints(), part, "points");
    checkSizes(*data.GetCellData(), data.GetNumberOfCells(), part, "cells");
}

} // namespace

std::vector<double> pointsOf(vtkDataSet& data, RowSelection const& rows)
{
    auto* const set = vtkPointSet::SafeDownCast(&data);
    if (set != nullptr && set->GetPoints() != nullptr)
        return coordinatesOf(*set->GetPoints()->GetData(), rows);
    std::vector<double> coordinates(rows.size() * 3);
    for (std::size_t i = 0; i < rows.size(); ++i)
        data.GetPoint(static_cast<vtkIdType>(rows[i]), &coordinates[3 * i]);
    return coordinates;
}

vtkDataArray* pointIdArray(vtkDataSet& data)
{
    return idArray(*data.GetPointData(), "Node Ids");
}

vtkDataArray* cellIdArray(vtkDataSet& data)
{
    return idArray(*data.GetCellData(), "Element IDs");
}

Part readMesh(Block const& block, PartRows& kept, PointOrder order, Report& report)
{
    Part part;
    part.name = block.name;
    part.groups = block.groups;
    if (block.data == nullptr)
        return part;
    vtkDataSet& data = *block.data;
    check(data, part);
    ElementBuilder builder(part, data, order);
    builder.build(report);
    kept.cells = builder.kept();
    kept.points = keptPoints(part, data);
    renumber(part, kept.points, static_cast<std::size_t>(data.GetNumberOfPoints()));
    part.coordinates = pointsOf(data, kept.points);
    if (vtkDataArray* const ids = pointIdArray(data))
        part.nodeIds = idsOf(*ids, kept.points);
    if (vtkDataArray* const ids = cellIdArray(data))
        part.elementIds = idsOf(*ids, kept.cells);
    return part;
}

} // namespace VtkRead
