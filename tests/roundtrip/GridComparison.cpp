#include "GridComparison.h"

#include "CellPoints.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace {

using Support::ModelFile;
using Path = ModelFile::Path;
using Numbers = std::vector<std::uint32_t>;

Path below(Path path, std::string const& shape)
{
    path.push_back(shape);
    return path;
}

/// A shape's elements as lists of points of the grid, by their cell.
void collectElements(ModelFile& model, Path const& shape,
                     std::map<vtkIdType, std::vector<vtkIdType>>& elements)
{
    if (model.find(shape, "Connectivity") == nullptr)
        return;
    Numbers const nodes = model.numbers(shape, "Node Ids");
    Numbers const connectivity = model.numbers(shape, "Connectivity");
    Numbers const lengths = model.numbers(shape, "Polylength");
    Numbers const ids = model.numbers(shape, "Element IDs");
    ASSERT_EQ(lengths.size(), ids.size());
    std::size_t place = 0;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        std::vector<vtkIdType>& points = elements[vtkIdType(ids[i]) - 1];
        EXPECT_TRUE(points.empty()) << "cell " << ids[i] << " is there twice";
        for (std::uint32_t n = 0; n < lengths[i]; ++n)
            points.push_back(vtkIdType(nodes.at(connectivity.at(place++))) - 1);
    }
    EXPECT_EQ(place, connectivity.size());
}

void expectSameCoordinates(vtkDataSet& grid, ModelFile& model, Path const& shape,
                           std::vector<bool>& seen)
{
    if (model.find(shape, "Node Ids") == nullptr)
        return;
    Numbers const ids = model.numbers(shape, "Node Ids");
    std::vector<float> const coordinates = model.floats(shape, "Coordinates");
    ASSERT_EQ(coordinates.size(), 3 * ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        double const* const point = grid.GetPoint(vtkIdType(ids[i]) - 1);
        seen.at(ids[i] - 1) = true;
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_EQ(coordinates[3 * i + axis], static_cast<float>(point[axis]));
    }
}

bool isSame(double expected, double actual)
{
    return expected == actual || (std::isnan(expected) && std::isnan(actual));
}

void expectSameColumn(vtkDataArray& array, int component, ModelFile& model, Path const& shape,
                      std::string const& name, std::string const& step, Numbers const& ids,
                      std::size_t column)
{
    MoxRead::Variable const& variable = model.get(shape, name, step);
    bool const isFloat = variable.elementType() == MoxRead::ElementType::Float;
    MoxRead::Dataset const values = model.model().read(variable);
    std::vector<float> const floats = isFloat ? values.floats() : std::vector<float>();
    ASSERT_EQ(values.rows(), ids.size()) << name;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        double const expected = array.GetComponent(vtkIdType(ids[i]) - 1, component);
        std::size_t const place = i * values.width + column;
        if (isFloat)
            EXPECT_TRUE(isSame(static_cast<float>(expected), floats[place]))
                << name << " row " << i;
        else
            EXPECT_EQ(expected, values.words[place]) << name << " row " << i;
    }
}

void expectSameArray(vtkDataArray& array, ModelFile& model, Path const& shape,
                     std::string const& step, Numbers const& ids)
{
    std::string const name = array.GetName();
    int const components = array.GetNumberOfComponents();
    bool const isWhole = components == 1 || components == 3 || components == 6;
    for (int c = 0; c < components; ++c)
        expectSameColumn(array, c, model, shape,
                         isWhole ? name : name + " " + std::to_string(c + 1), step, ids,
                         isWhole ? static_cast<std::size_t>(c) : 0);
}

void expectSameArrays(vtkFieldData& arrays, ModelFile& model, Path const& shape,
                      std::string const& step, std::string const& ids)
{
    if (model.find(shape, ids) == nullptr)
        return;
    Numbers const rows = model.numbers(shape, ids);
    for (int i = 0; i < arrays.GetNumberOfArrays(); ++i)
        expectSameArray(*arrays.GetArray(i), model, shape, step, rows);
}

} // namespace

void expectSameMesh(vtkDataSet& grid, ModelFile& model, std::vector<std::string> const& shapes,
                    Path const& path)
{
    std::vector<bool> seen(static_cast<std::size_t>(grid.GetNumberOfPoints()));
    std::map<vtkIdType, std::vector<vtkIdType>> elements;
    for (std::string const& shape : shapes) {
        expectSameCoordinates(grid, model, below(path, shape), seen);
        collectElements(model, below(path, shape), elements);
    }
    EXPECT_EQ(seen, std::vector<bool>(seen.size(), true));
    EXPECT_EQ(elements.size(), static_cast<std::size_t>(grid.GetNumberOfCells()));
    for (vtkIdType cell = 0; cell < grid.GetNumberOfCells(); ++cell)
        EXPECT_EQ(elements[cell], pointsOf(grid, cell)) << "cell " << cell;
}

void expectSameFields(vtkDataSet& grid, ModelFile& model, std::vector<std::string> const& shapes,
                      std::string const& step, Path const& path)
{
    for (std::string const& shape : shapes) {
        expectSameArrays(*grid.GetPointData(), model, below(path, shape), step, "Node Ids");
        expectSameArrays(*grid.GetCellData(), model, below(path, shape), step, "Element IDs");
    }
}
