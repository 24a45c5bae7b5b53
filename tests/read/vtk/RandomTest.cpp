// Files of each of VTK's XML kinds whose content is made up at random: what is read has to be what
// was made up, number by number.

#include "OpenedFile.h"

#include "support/Folder.h"
#include "support/RandomPicks.h"
#include "support/VtkGrids.h"

#include <vtkCellArray.h>
#include <vtkCompositeDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStructuredGrid.h>
#include <vtkXMLDataSetWriter.h>
#include <vtkXMLMultiBlockDataWriter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <string>
#include <variant>
#include <vector>

namespace {

using namespace Support;
using Exchange::Location;
using VtkRead::FileKind;
using Doubles = std::vector<double>;
using Integers = std::vector<std::int64_t>;
using Names = std::vector<std::string>;
using Rows = std::vector<std::uint32_t>;
using Axes = std::array<int, 3>;

constexpr std::uint32_t caseCount = 60;

/// Of so few digits that a text and a float hold it.
double numberOf(RandomPicks& picks)
{
    return static_cast<double>(picks.below(8192)) / 8 - 512;
}

Doubles numbersOf(RandomPicks& picks, std::size_t count)
{
    Doubles numbers;
    for (std::size_t i = 0; i < count; ++i)
        numbers.push_back(numberOf(picks));
    return numbers;
}

struct Result
{
    std::string name;
    Location location;
    std::size_t components;
    bool isInteger;
    Doubles values;
};

/// A dataset of VTK, and what is to be read of it.
struct Mesh
{
    vtkSmartPointer<vtkDataSet> data;
    Doubles coordinates;
    Names types;
    Rows connectivity;
    std::vector<Result> results;
};

/// What is made up differs by what it is: the steps of a series have the same elements.
struct Picks
{
    RandomPicks elements;
    RandomPicks places;
    RandomPicks values;
};

Picks picksOf(std::uint32_t seed, std::uint32_t step, bool isMoving)
{
    return {RandomPicks(seed), RandomPicks(isMoving ? seed + 1000 * step : seed),
            RandomPicks(seed + 1000 * step)};
}

// Grids of points in rows.

Axes sizeOf(RandomPicks& picks)
{
    Axes size{};
    for (int& count : size)
        count = 1 + static_cast<int>(picks.below(4));
    return size;
}

/// The last index along an axis is part of the extent.
std::array<int, 6> extentOf(Axes const& size, RandomPicks& picks)
{
    std::array<int, 6> extent{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        extent[2 * axis] = static_cast<int>(picks.below(3));
        extent[2 * axis + 1] = extent[2 * axis] + size[axis] - 1;
    }
    return extent;
}

void forEachIndex(Axes const& size, std::function<void(Axes const&)> const& visit)
{
    for (int z = 0; z < size[2]; ++z)
        for (int y = 0; y < size[1]; ++y)
            for (int x = 0; x < size[0]; ++x)
                visit({x, y, z});
}

void addCells(Mesh& mesh, Axes const& size)
{
    static Names const types = {"Point", "Line", "Quadrangle", "Hexahedron"};
    Axes const strides = {1, size[0], size[0] * size[1]};
    Axes cells = size;
    std::vector<int> corners = {0};
    std::size_t dimension = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (size[axis] == 1)
            continue;
        --cells[axis];
        // A face goes around, a solid up.
        std::vector<int> further = corners;
        if (++dimension == 2)
            std::reverse(further.begin(), further.end());
        for (int const corner : further)
            corners.push_back(corner + strides[axis]);
    }
    forEachIndex(cells, [&](Axes const& index) {
        mesh.types.push_back(types[dimension]);
        int const first = index[0] + index[1] * strides[1] + index[2] * strides[2];
        for (int const corner : corners)
            mesh.connectivity.push_back(static_cast<std::uint32_t>(first + corner));
    });
}

vtkSmartPointer<vtkPoints> pointsOf(Doubles const& coordinates)
{
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetDataTypeToDouble();
    for (std::size_t i = 0; i < coordinates.size(); i += 3)
        points->InsertNextPoint(&coordinates[i]);
    return points;
}

Mesh structuredGrid(Picks& picks)
{
    Mesh mesh;
    Axes const size = sizeOf(picks.elements);
    auto const grid = vtkSmartPointer<vtkStructuredGrid>::New();
    grid->SetExtent(extentOf(size, picks.elements).data());
    mesh.coordinates =
        numbersOf(picks.places, 3 * static_cast<std::size_t>(size[0] * size[1] * size[2]));
    grid->SetPoints(pointsOf(mesh.coordinates));
    mesh.data = grid;
    addCells(mesh, size);
    return mesh;
}

Mesh rectilinearGrid(Picks& picks)
{
    Mesh mesh;
    Axes const size = sizeOf(picks.elements);
    auto const grid = vtkSmartPointer<vtkRectilinearGrid>::New();
    grid->SetExtent(extentOf(size, picks.elements).data());
    std::array<Doubles, 3> axes;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        axes[axis] = numbersOf(picks.places, static_cast<std::size_t>(size[axis]));
        std::sort(axes[axis].begin(), axes[axis].end());
    }
    grid->SetXCoordinates(arrayOf<vtkDoubleArray>("x", 1, axes[0]));
    grid->SetYCoordinates(arrayOf<vtkDoubleArray>("y", 1, axes[1]));
    grid->SetZCoordinates(arrayOf<vtkDoubleArray>("z", 1, axes[2]));
    forEachIndex(size, [&](Axes const& index) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            mesh.coordinates.push_back(axes[axis][static_cast<std::size_t>(index[axis])]);
    });
    mesh.data = grid;
    addCells(mesh, size);
    return mesh;
}

/// Its axes may be turned; the origin is where all indices are 0.
Mesh image(Picks& picks)
{
    static std::array<std::array<double, 9>, 3> const directions = {{
        {1, 0, 0, 0, 1, 0, 0, 0, 1},
        {0, -1, 0, 1, 0, 0, 0, 0, 1},
        {0, 0, 1, 1, 0, 0, 0, 1, 0},
    }};
    Mesh mesh;
    Axes const size = sizeOf(picks.elements);
    auto const extent = extentOf(size, picks.elements);
    auto const& direction = directions.at(picks.elements.below(directions.size()));
    Doubles const origin = numbersOf(picks.places, 3);
    Doubles const spacing = {0.5, 1.25, static_cast<double>(1 + picks.places.below(4))};
    vtkNew<vtkImageData> grid;
    grid->SetExtent(extent[0], extent[1], extent[2], extent[3], extent[4], extent[5]);
    grid->SetOrigin(origin.data());
    grid->SetSpacing(spacing.data());
    grid->SetDirectionMatrix(direction.data());
    forEachIndex(size, [&](Axes const& index) {
        for (std::size_t row = 0; row < 3; ++row) {
            double place = origin[row];
            for (std::size_t axis = 0; axis < 3; ++axis)
                place +=
                    direction[3 * row + axis] * spacing[axis] * (extent[2 * axis] + index[axis]);
            mesh.coordinates.push_back(place);
        }
    });
    mesh.data = grid;
    addCells(mesh, size);
    return mesh;
}

// Grids of any cells.

constexpr std::size_t pointCount = 24;

std::vector<vtkIdType> somePointsOf(RandomPicks& picks, std::size_t count)
{
    std::vector<vtkIdType> points(pointCount);
    std::iota(points.begin(), points.end(), vtkIdType{0});
    picks.shuffle(points);
    points.resize(count);
    return points;
}

struct CellKind
{
    int number;
    std::string type;
    std::size_t pointCount;
    /// Of the cell's points in a model; empty when it is the same.
    std::vector<std::size_t> order;
};

std::vector<CellKind> const cellKinds = {
    {VTK_VERTEX, "Point", 1, {}},
    {VTK_LINE, "Line", 2, {}},
    {VTK_POLY_LINE, "Polyline", 5, {}},
    {VTK_TRIANGLE, "Triangle", 3, {}},
    {VTK_TRIANGLE_STRIP, "Triangle strip", 6, {}},
    {VTK_POLYGON, "Polygon", 5, {}},
    {VTK_PIXEL, "Quadrangle", 4, {0, 1, 3, 2}},
    {VTK_QUAD, "Quadrangle", 4, {}},
    {VTK_TETRA, "Tetrahedron", 4, {}},
    {VTK_VOXEL, "Hexahedron", 8, {0, 1, 3, 2, 4, 5, 7, 6}},
    {VTK_HEXAHEDRON, "Hexahedron", 8, {}},
    {VTK_WEDGE, "Wedge", 6, {0, 2, 1, 3, 5, 4}},
    {VTK_PYRAMID, "Pyramid", 5, {}},
    {VTK_QUADRATIC_TETRA, "Tetrahedron 10", 10, {}},
    {VTK_QUADRATIC_WEDGE, "Wedge 15", 15, {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13}}};

void addElement(Mesh& mesh, CellKind const& kind, std::vector<vtkIdType> const& points)
{
    mesh.types.push_back(kind.type);
    for (std::size_t i = 0; i < points.size(); ++i)
        mesh.connectivity.push_back(
            static_cast<std::uint32_t>(points[kind.order.empty() ? i : kind.order[i]]));
}

Mesh unstructuredGrid(Picks& picks)
{
    Mesh mesh;
    mesh.coordinates = numbersOf(picks.places, 3 * pointCount);
    std::vector<Cell> cells;
    std::size_t const count = picks.elements.below(12);
    for (std::size_t i = 0; i < count; ++i) {
        CellKind const kind = picks.elements.oneOf(cellKinds);
        cells.push_back({kind.number, somePointsOf(picks.elements, kind.pointCount)});
        addElement(mesh, kind, cells.back().points);
    }
    auto const grid = gridOf(0, cells);
    grid->SetPoints(pointsOf(mesh.coordinates));
    mesh.data = grid;
    return mesh;
}

/// Cells of the kinds that such a list may have; in a file of polygons, each list stands alone.
vtkSmartPointer<vtkCellArray> cellsOf(Mesh& mesh, Picks& picks, std::vector<CellKind> const& kinds)
{
    auto cells = vtkSmartPointer<vtkCellArray>::New();
    std::size_t const count = picks.elements.below(4);
    for (std::size_t i = 0; i < count; ++i) {
        CellKind const kind = picks.elements.oneOf(kinds);
        auto const points = somePointsOf(picks.elements, kind.pointCount);
        cells->InsertNextCell(static_cast<vtkIdType>(points.size()), points.data());
        addElement(mesh, kind, points);
    }
    return cells;
}

Mesh polygons(Picks& picks)
{
    Mesh mesh;
    mesh.coordinates = numbersOf(picks.places, 3 * pointCount);
    auto const data = vtkSmartPointer<vtkPolyData>::New();
    data->SetPoints(pointsOf(mesh.coordinates));
    data->SetVerts(cellsOf(mesh, picks, {{0, "Point", 1, {}}, {0, "Polyvertex", 3, {}}}));
    data->SetLines(cellsOf(mesh, picks, {{0, "Line", 2, {}}, {0, "Polyline", 4, {}}}));
    data->SetPolys(cellsOf(
        mesh, picks, {{0, "Triangle", 3, {}}, {0, "Quadrangle", 4, {}}, {0, "Polygon", 7, {}}}));
    data->SetStrips(cellsOf(mesh, picks, {{0, "Triangle strip", 5, {}}}));
    mesh.data = data;
    return mesh;
}

// Results.

void addResult(Mesh& mesh, Picks& picks, std::string const& name)
{
    static std::vector<int> const floats = {VTK_FLOAT, VTK_DOUBLE};
    static std::vector<int> const integers = {
        VTK_SIGNED_CHAR, VTK_UNSIGNED_CHAR, VTK_SHORT,     VTK_UNSIGNED_SHORT,
        VTK_INT,         VTK_UNSIGNED_INT,  VTK_LONG_LONG, VTK_UNSIGNED_LONG_LONG};
    Result result;
    result.name = name;
    result.location = picks.elements.chance(50) ? Location::Nodes : Location::Elements;
    result.components = picks.elements.oneOf<std::size_t>({1, 2, 3, 6, 9});
    result.isInteger = picks.elements.chance(40);
    vtkSmartPointer<vtkDataArray> const array = vtkSmartPointer<vtkDataArray>::Take(
        vtkDataArray::CreateDataArray(picks.elements.oneOf(result.isInteger ? integers : floats)));
    auto const rows = result.location == Location::Nodes ? mesh.data->GetNumberOfPoints()
                                                         : mesh.data->GetNumberOfCells();
    array->SetName(name.c_str());
    array->SetNumberOfComponents(static_cast<int>(result.components));
    array->SetNumberOfTuples(rows);
    for (vtkIdType row = 0; row < rows; ++row)
        for (int column = 0; column < array->GetNumberOfComponents(); ++column) {
            result.values.push_back(result.isInteger ? static_cast<double>(picks.values.below(128))
                                                     : numberOf(picks.values));
            array->SetComponent(row, column, result.values.back());
        }
    if (result.location == Location::Nodes)
        mesh.data->GetPointData()->AddArray(array);
    else
        mesh.data->GetCellData()->AddArray(array);
    mesh.results.push_back(result);
}

// Files.

struct Kind
{
    std::string ending;
    Mesh (*make)(Picks&);
};

std::vector<Kind> const kinds = {{"vtu", unstructuredGrid},
                                 {"vtp", polygons},
                                 {"vts", structuredGrid},
                                 {"vtr", rectilinearGrid},
                                 {"vti", image}};

Mesh meshOf(Kind const& kind, Picks& picks)
{
    Mesh mesh = kind.make(picks);
    for (char const* const name : {"T", "some name", "\xC3\xBC", "S"})
        if (picks.elements.chance(60))
            addResult(mesh, picks, name);
    return mesh;
}

void write(vtkXMLWriter& writer, vtkDataObject& data, std::filesystem::path const& path,
           RandomPicks& picks)
{
    using Writer = vtkXMLWriter;
    writer.SetDataMode(picks.oneOf<int>({Writer::Ascii, Writer::Binary, Writer::Appended}));
    writer.SetCompressorType(picks.oneOf<int>({Writer::NONE, Writer::ZLIB, Writer::LZ4}));
    writer.SetHeaderType(picks.oneOf<int>({Writer::UInt32, Writer::UInt64}));
    writer.SetByteOrder(picks.oneOf<int>({Writer::BigEndian, Writer::LittleEndian}));
    writer.SetEncodeAppendedData(picks.chance(50));
    writer.SetInputDataObject(&data);
    writer.SetFileName(path.c_str());
    ASSERT_EQ(writer.Write(), 1);
}

Mesh writeMesh(Kind const& kind, std::filesystem::path const& path, Picks picks)
{
    Mesh mesh = meshOf(kind, picks);
    vtkNew<vtkXMLDataSetWriter> writer;
    write(*writer, *mesh.data, path, picks.elements);
    return mesh;
}

// What is read.

Doubles valuesOf(Exchange::Field const& field)
{
    return std::visit([](auto const& values) { return Doubles(values.begin(), values.end()); },
                      field.values);
}

void expectPart(Exchange::Part const& part, Mesh const& mesh)
{
    Names types;
    for (Exchange::ElementType const* const type : part.types)
        types.push_back(type->name);
    EXPECT_EQ(part.coordinates, mesh.coordinates);
    EXPECT_EQ(types, mesh.types);
    EXPECT_EQ(part.connectivity, mesh.connectivity);
}

void expectResults(OpenedFile const& file, std::size_t step, std::size_t part, Mesh const& mesh)
{
    std::size_t count = 0;
    for (Exchange::Field const& field : file.fields.at(step))
        count += field.part == part && !field.movesNodes ? 1 : 0;
    EXPECT_EQ(count, mesh.results.size());
    for (Result const& result : mesh.results) {
        SCOPED_TRACE(result.name);
        Exchange::Field const& field = file.field(result.name, step, part);
        EXPECT_EQ(field.location, result.location);
        EXPECT_EQ(field.components, result.components);
        EXPECT_EQ(std::holds_alternative<Integers>(field.values), result.isInteger);
        EXPECT_EQ(valuesOf(field), result.values);
    }
}

TEST(VtkRandom, MeshesOfEachKindAreReadRight)
{
    for (Kind const& kind : kinds)
        for (std::uint32_t seed = 0; seed < caseCount; ++seed) {
            SCOPED_TRACE(kind.ending + " " + std::to_string(seed));
            Folder const folder;
            std::filesystem::path const path = folder.path("in." + kind.ending);
            Mesh const mesh = writeMesh(kind, path, picksOf(seed, 0, false));
            OpenedFile const file(FileKind::Xml, path);
            ASSERT_EQ(file.parts.size(), 1U);
            expectPart(file.parts[0], mesh);
            expectResults(file, 0, 0, mesh);
            EXPECT_EQ(file.warnings(), Names());
        }
}

/// Blocks within blocks, with their names, and the meshes in them.
class Tree
{
public:
    explicit Tree(std::uint32_t seed) : seed_(seed), picks_(seed)
    {
        root_ = group(Names(), 1 + picks_.below(3));
    }

    vtkMultiBlockDataSet& root() const { return *root_; }

    struct Leaf
    {
        Names groups;
        std::string name;
        Mesh mesh;
    };

    std::vector<Leaf> const& leaves() const { return leaves_; }

private:
    vtkSmartPointer<vtkMultiBlockDataSet> group(Names const& path, std::size_t count)
    {
        constexpr std::size_t deepest = 2;
        auto group = vtkSmartPointer<vtkMultiBlockDataSet>::New();
        for (unsigned int i = 0; i < count; ++i) {
            std::string const name = "block " + std::to_string(++blocks_);
            if (path.size() < deepest && picks_.chance(40)) {
                Names below = path;
                below.push_back(name);
                group->SetBlock(i, this->group(below, 1 + picks_.below(2)));
            } else {
                Picks picks = picksOf(seed_ + 100 * blocks_, 0, false);
                leaves_.push_back({path, name, meshOf(picks_.oneOf(kinds), picks)});
                group->SetBlock(i, leaves_.back().mesh.data);
            }
            group->GetMetaData(i)->Set(vtkCompositeDataSet::NAME(), name);
        }
        return group;
    }

    std::uint32_t seed_;
    std::uint32_t blocks_ = 0;
    RandomPicks picks_;
    std::vector<Leaf> leaves_;
    vtkSmartPointer<vtkMultiBlockDataSet> root_;
};

TEST(VtkRandom, BlocksAreReadRight)
{
    for (std::uint32_t seed = 0; seed < caseCount; ++seed) {
        SCOPED_TRACE(seed);
        Folder const folder;
        Tree const tree(seed);
        RandomPicks picks(seed);
        vtkNew<vtkXMLMultiBlockDataWriter> writer;
        write(*writer, tree.root(), folder.path("in.vtm"), picks);
        OpenedFile const file(FileKind::Xml, folder.path("in.vtm"));
        ASSERT_EQ(file.parts.size(), tree.leaves().size());
        for (std::size_t i = 0; i < file.parts.size(); ++i) {
            Tree::Leaf const& leaf = tree.leaves()[i];
            EXPECT_EQ(file.parts[i].groups, leaf.groups);
            EXPECT_EQ(file.parts[i].name, leaf.name);
            expectPart(file.parts[i], leaf.mesh);
            expectResults(file, 0, i, leaf.mesh);
        }
        EXPECT_EQ(file.warnings(), Names());
    }
}

/// A series of files, one for each part in each step.
struct Series
{
    Series(Folder const& folder, std::uint32_t seed)
    {
        RandomPicks picks(seed);
        std::size_t const partCount = 1 + picks.below(2);
        std::size_t const stepCount = 1 + picks.below(3);
        bool const isMoving = picks.chance(50);
        std::vector<Kind> ofParts;
        for (std::size_t part = 0; part < partCount; ++part)
            ofParts.push_back(picks.oneOf(kinds));
        std::string text;
        for (std::uint32_t step = 0; step < stepCount; ++step) {
            steps.emplace_back();
            for (std::uint32_t part = 0; part < partCount; ++part) {
                std::string const name =
                    std::to_string(step) + "_" + std::to_string(part) + "." + ofParts[part].ending;
                steps.back().push_back(writeMesh(ofParts[part], folder.path(name),
                                                 picksOf(seed + 100 * part, step, isMoving)));
                text += "<DataSet timestep=\"" + std::to_string(step) + ".5\" part=\"" +
                        std::to_string(part) + "\" file=\"" + name + "\"/>";
            }
        }
        folder.write("in.pvd", "<VTKFile type=\"Collection\"><Collection>" + text +
                                   "</Collection></VTKFile>");
    }

    std::vector<std::vector<Mesh>> steps;
};

void expectMotion(OpenedFile const& file, std::size_t step, std::size_t part,
                  Doubles const& coordinates)
{
    Exchange::Field const* const moved = file.find(step, "Coordinates", part);
    ASSERT_EQ(moved != nullptr, coordinates != file.parts[part].coordinates);
    if (moved != nullptr) {
        EXPECT_EQ(valuesOf(*moved), coordinates);
    }
}

TEST(VtkRandom, SeriesAreReadRight)
{
    for (std::uint32_t seed = 0; seed < caseCount; ++seed) {
        SCOPED_TRACE(seed);
        Folder const folder;
        Series const series(folder, seed);
        OpenedFile const file(FileKind::Collection, folder.path("in.pvd"));
        ASSERT_EQ(file.parts.size(), series.steps.front().size());
        ASSERT_EQ(file.steps.size(), series.steps.size());
        for (std::size_t part = 0; part < file.parts.size(); ++part) {
            expectPart(file.parts[part], series.steps.front()[part]);
            for (std::size_t step = 0; step < file.steps.size(); ++step) {
                EXPECT_EQ(file.steps[step].time, static_cast<double>(step) + 0.5);
                expectMotion(file, step, part, series.steps[step][part].coordinates);
                expectResults(file, step, part, series.steps[step][part]);
            }
        }
    }
}

} // namespace
