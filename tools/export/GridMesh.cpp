#include "GridMesh.h"

#include "ElementCells.h"
#include "Error.h"
#include "moxread/FormatError.h"
#include "moxread/LittleEndian.h"
#include "moxread/Text.h"
#include "vtk/CellType.h"

#include <vtkCellType.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <vector>

namespace Export {

namespace {

/// Calls a function with pointers to the offsets and the connectivity, which are 32 or 64 bits
/// wide.
template <typename Function>
void withPointers(vtkCellArray& cells, Function const& function)
{
    if (cells.IsStorage64Bit())
        function(cells.GetOffsetsArray64()->GetPointer(0),
                 cells.GetConnectivityArray64()->GetPointer(0));
    else
        function(cells.GetOffsetsArray32()->GetPointer(0),
                 cells.GetConnectivityArray32()->GetPointer(0));
}

template <typename Id>
void put(Id* to, std::int64_t value)
{
    *to = static_cast<Id>(value);
}

using Order = std::vector<std::size_t>;

/// By VTK's number of the type; null where the order is that of elements.
std::array<Order const*, 256> ordersOfCells()
{
    std::array<Order const*, 256> orders = {};
    for (std::size_t number = 0; number < orders.size(); ++number) {
        Vtk::CellType const* const type = Vtk::CellType::find(static_cast<int>(number), 0);
        if (type != nullptr && !type->order.empty())
            orders[number] = &type->order;
    }
    return orders;
}

template <typename Id>
void reorder(Id* nodes, Order const& order)
{
    std::vector<Id> const element(nodes, nodes + order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        nodes[order[i]] = element[i];
}

Error errorIn(Placement const& placement, std::string const& sentence)
{
    return Error("Shape " + MoxRead::quoted(placement.shape->name) + ": " + sentence);
}

void checkIntegers(Placement const& placement, MoxRead::Dataset const& dataset, char const* name)
{
    if (dataset.elementType != MoxRead::ElementType::Uint32)
        throw errorIn(placement, std::string("Its ") + name + " has no integers.");
}

std::uint64_t sumOf(std::vector<std::uint32_t> const& words)
{
    std::uint64_t sum = 0;
    for (std::uint32_t const word : words)
        sum += word;
    return sum;
}

float coordinateFrom(std::uint32_t word, MoxRead::ElementType type)
{
    return type == MoxRead::ElementType::Float ? MoxRead::floatFromBits(word)
                                               : static_cast<float>(word);
}

unsigned char cellTypeOf(Placement const& placement, ElementCells& cells, std::uint32_t nodes)
{
    try {
        return cells.of(nodes);
    } catch (Error const& error) {
        throw errorIn(placement, error.what());
    }
}

ElementCells elementCellsOf(Placement const& placement)
{
    try {
        return {placement.mesh.dimension(), placement.mesh.elementType};
    } catch (Error const& error) {
        throw errorIn(placement, error.what());
    }
}

// The coordinates that a shape has in a step: those without a step where there are no others.
MoxRead::Variable const* coordinatesIn(std::string const& step, Placement const& placement,
                                       MoxRead::Model const& model)
{
    for (MoxRead::Variable const* variable : placement.shape->datasetsOf(step))
        if (isCoordinates(*variable) && model.resolve(*variable).rows() == placement.mesh.nodeCount)
            return variable;
    return placement.mesh.coordinates;
}

} // namespace

GridMesh::GridMesh(std::vector<Placement> const& placements, MoxRead::Model const& model)
    : placements_(placements), model_(model)
{
    for (Placement const& placement : placements_) {
        nodeCount_ += placement.mesh.nodeCount;
        elementCount_ += placement.mesh.elementCount;
        entryCount_ += placement.mesh.entryCount;
    }
    makeRoom();
}

void GridMesh::plan(ReadPlan& plan)
{
    for (Placement const& placement : placements_) {
        if (placement.mesh.coordinates == nullptr)
            continue;
        planCoordinates(plan, placement, *placement.mesh.coordinates);
        planElements(plan, placement);
    }
}

void GridMesh::planStep(ReadPlan& plan, std::string const& step)
{
    for (Placement const& placement : placements_) {
        MoxRead::Variable const* const coordinates = coordinatesIn(step, placement, model_);
        if (coordinates != nullptr)
            planCoordinates(plan, placement, *coordinates);
    }
}

void GridMesh::orderNodes()
{
    auto const orders = ordersOfCells();
    withPointers(*cells_, [&](auto const* offsets, auto* connectivity) {
        for (std::int64_t i = 0; i < elementCount_; ++i)
            if (Order const* const order = orders[types_->GetValue(i)])
                reorder(connectivity + offsets[i], *order);
    });
}

void GridMesh::attachTo(vtkUnstructuredGrid& grid)
{
    vtkNew<vtkPoints> points;
    points->SetData(coordinates_);
    grid.SetPoints(points);
    grid.SetCells(types_, cells_);
}

void GridMesh::makeRoom()
{
    coordinates_->SetNumberOfComponents(3);
    coordinates_->SetNumberOfTuples(nodeCount_);
    types_->SetNumberOfValues(elementCount_);
    types_->FillValue(VTK_EMPTY_CELL);
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    if (entryCount_ <= most && nodeCount_ <= most)
        cells_->Use32BitStorage();
    else
        cells_->Use64BitStorage();
    if (!cells_->ResizeExact(elementCount_, entryCount_))
        throw std::bad_alloc();
    withPointers(*cells_, [this](auto* offsets, auto* /*connectivity*/) {
        put(offsets + elementCount_, entryCount_);
    });
}

void GridMesh::planCoordinates(ReadPlan& plan, Placement const& placement,
                               MoxRead::Variable const& coordinates)
{
    MoxRead::Variable const*& shown = shown_[placement.index];
    MoxRead::Variable const* const stored = &model_.resolve(coordinates);
    if (shown == stored)
        return;
    shown = stored;
    plan.add(coordinates, [this, &placement](MoxRead::Dataset const& dataset) {
        takeCoordinates(placement, dataset);
    });
}

void GridMesh::planElements(ReadPlan& plan, Placement const& placement)
{
    if (!placement.mesh.hasElements()) {
        makeVertices(placement);
        return;
    }
    plan.add(*placement.mesh.connectivity, [this, &placement](MoxRead::Dataset const& dataset) {
        takeConnectivity(placement, dataset);
    });
    plan.add(*placement.mesh.polylength, [this, &placement](MoxRead::Dataset const& dataset) {
        takePolylength(placement, dataset);
    });
}

void GridMesh::takeCoordinates(Placement const& placement, MoxRead::Dataset const& dataset)
{
    float* const first = coordinates_->GetPointer(3 * placement.firstNode);
    std::transform(dataset.words.begin(), dataset.words.end(), first,
                   [&](std::uint32_t word) { return coordinateFrom(word, dataset.elementType); });
    if (!placement.shape->transform.isIdentity())
        for (std::size_t row = 0; row < dataset.rows(); ++row)
            placement.shape->transform.applyToPoint(first + 3 * row);
    coordinates_->Modified();
}

void GridMesh::takeConnectivity(Placement const& placement, MoxRead::Dataset const& dataset)
{
    checkIntegers(placement, dataset, "connectivity");
    withPointers(*cells_, [&](auto* /*offsets*/, auto* connectivity) {
        auto* to = connectivity + placement.firstEntry;
        for (std::uint32_t const node : dataset.words) {
            if (node >= placement.mesh.nodeCount)
                throw errorIn(placement, "Its connectivity refers to node " + std::to_string(node) +
                                             " of " + std::to_string(placement.mesh.nodeCount) +
                                             ", counted from 0.");
            put(to++, placement.firstNode + node);
        }
    });
}

void GridMesh::takePolylength(Placement const& placement, MoxRead::Dataset const& dataset)
{
    checkIntegers(placement, dataset, "polylength");
    if (sumOf(dataset.words) != placement.mesh.entryCount)
        throw errorIn(placement, "Its elements have " + std::to_string(sumOf(dataset.words)) +
                                     " nodes by its polylength, but " +
                                     std::to_string(placement.mesh.entryCount) +
                                     " by its connectivity.");
    ElementCells cells = elementCellsOf(placement);
    unsigned char* type = types_->GetPointer(placement.firstElement);
    std::int64_t offset = placement.firstEntry;
    withPointers(*cells_, [&](auto* offsets, auto* /*connectivity*/) {
        auto* to = offsets + placement.firstElement;
        for (std::uint32_t const nodes : dataset.words) {
            *type++ = cellTypeOf(placement, cells, nodes);
            put(to++, offset);
            offset += nodes;
        }
    });
}

void GridMesh::makeVertices(Placement const& placement)
{
    unsigned char* const types = types_->GetPointer(placement.firstElement);
    std::fill_n(types, placement.mesh.nodeCount, static_cast<unsigned char>(VTK_VERTEX));
    withPointers(*cells_, [&](auto* offsets, auto* connectivity) {
        for (std::int64_t row = 0; row < placement.mesh.nodeCount; ++row) {
            put(offsets + placement.firstElement + row, placement.firstEntry + row);
            put(connectivity + placement.firstEntry + row, placement.firstNode + row);
        }
    });
}

} // namespace Export
