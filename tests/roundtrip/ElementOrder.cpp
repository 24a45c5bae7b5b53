#include "ElementOrder.h"

#include "support/ModelFile.h"

#include <export/Export.h>
#include <mox/check/ElementSize.h>
#include <mox/commands/CheckCommand.h>
#include <mox/commands/TranslateCommand.h>

#include <vtkCell.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <sstream>

namespace ElementOrder {

namespace {

using Support::ModelFile;

/// What .frd files have digits for.
constexpr double tolerance = 1e-3;

Point operator+(Point const& left, Point const& right)
{
    return {left[0] + right[0], left[1] + right[1], left[2] + right[2]};
}

Point operator-(Point const& left, Point const& right)
{
    return {left[0] - right[0], left[1] - right[1], left[2] - right[2]};
}

Point operator*(double factor, Point const& point)
{
    return {factor * point[0], factor * point[1], factor * point[2]};
}

Point cross(Point const& left, Point const& right)
{
    return {left[1] * right[2] - left[2] * right[1], left[2] * right[0] - left[0] * right[2],
            left[0] * right[1] - left[1] * right[0]};
}

double dot(Point const& left, Point const& right)
{
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

Point meanOf(std::vector<Point> const& points)
{
    Point sum = {};
    for (Point const& point : points)
        sum = sum + point;
    return 1.0 / static_cast<double>(points.size()) * sum;
}

void expectNear(Point const& actual, Point const& expected, std::string const& what)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(actual[axis], expected[axis], tolerance) << what << ", axis " << axis;
}

std::vector<std::string> wordsOf(std::string const& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

struct Shape
{
    std::vector<Point> corners;
    int dimension;
    /// Before it is skewed.
    double size;
};

std::map<std::string, Shape> const& shapes()
{
    static std::map<std::string, Shape> const all = {
        {"point", {{{0, 0, 0}}, 0, 0}},
        {"line", {{{0, 0, 0}, {1, 0, 0}}, 1, 1}},
        {"triangle", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 2, 0.5}},
        {"quadrangle", {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 2, 1}},
        {"tetrahedron", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 3, 1.0 / 6}},
        {"pyramid", {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}}, 3, 1.0 / 3}},
        {"wedge", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}}, 3, 0.5}},
        {"hexahedron",
         {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}},
          3,
          1}},
    };
    return all;
}

constexpr Point alongX = {2, 0.25, 0};
constexpr Point alongY = {0.5, 3, 0.25};
constexpr Point alongZ = {0.25, 0.5, 1.5};

Point skewed(Point const& point)
{
    return Point{1, 2, 3} + point[0] * alongX + point[1] * alongY + point[2] * alongZ;
}

double sizeOf(Shape const& shape)
{
    Point const area = cross(alongX, alongY);
    switch (shape.dimension) {
    case 1:
        return shape.size * std::sqrt(dot(alongX, alongX));
    case 2:
        return shape.size * std::sqrt(dot(area, area));
    default:
        return shape.size * dot(area, alongZ);
    }
}

Point middleOf(std::string const& word, std::vector<Point> const& corners)
{
    std::vector<Point> points;
    for (char const digit : word)
        points.push_back(corners.at(static_cast<std::size_t>(digit - '1')));
    return meanOf(points);
}

/// What docs/model-layout.md says of the nodes behind the corners; an element may have less of
/// them than stand here.
std::string furtherNodes(std::string const& shape, std::size_t nodeCount,
                         std::string const& elementType)
{
    std::string const uprightOfWedge = elementType == "Quadratic linear wedge" ? "" : " 14 25 36";
    std::string const ofWedge = "12 23 31 45 56 64" + uprightOfWedge +
                                (nodeCount == 21 ? " 123 456" : "") + " 1254 2365 3146 123456";
    static std::string const ofHexahedron = "12 23 34 41 56 67 78 85 15 26 37 48 "
                                            "1584 2376 1265 4873 1234 5678 12345678";
    static std::map<std::string, std::string> const others = {
        {"triangle", "12 23 31 123"},
        {"quadrangle", "12 23 34 41 1234"},
        {"tetrahedron", "12 23 31 14 24 34 123 124 234 134 1234"},
        {"pyramid", "12 23 34 41 15 25 35 45 1234 125 235 345 415 12345"},
        {"hexahedron", ofHexahedron},
    };
    if (shape == "line")
        return nodeCount == 3 ? "12" : "112 122";
    if (elementType == "Quadratic linear quad")
        return "12 34";
    if (shape == "wedge")
        return ofWedge;
    auto const found = others.find(shape);
    return found == others.end() ? "" : found->second;
}

class Passage
{
public:
    Passage(Element const& element, Expectation const& expectation)
        : element_(element), expectation_(expectation), shape_(shapes().at(element.shape)),
          nodeCount_(pointsOf(element).size())
    {}

    void run(Writer const& write)
    {
        if (!translate(write(folder_, element_)))
            return;
        checkModel();
        checkMeaning();
        if (expectation_.isInVtk)
            checkExport();
    }

private:
    std::string model() const { return model_; }

    /// Nothing to do where the writer has written a model.
    bool translate(std::filesystem::path const& input)
    {
        if (input.extension() == ".mox") {
            model_ = input.string();
            return true;
        }
        Mox::TranslateArguments arguments;
        arguments.input = input.string();
        arguments.output = model();
        std::ostringstream out;
        std::ostringstream err;
        int const status = Mox::translateFile(arguments, out, err);
        EXPECT_EQ(status, 0) << err.str();
        return status == 0;
    }

    static std::vector<Point> rowsOf(std::vector<float> const& values)
    {
        std::vector<Point> rows;
        for (std::size_t i = 0; i + 2 < values.size(); i += 3)
            rows.push_back({values[i], values[i + 1], values[i + 2]});
        return rows;
    }

    /// The path of the shape of the element. Some formats keep what is around it, too.
    ModelFile::Path shapeOf(ModelFile& file) const
    {
        for (std::string const& name : file.shapes()) {
            std::istringstream stream(name);
            ModelFile::Path path;
            for (std::string part; std::getline(stream, part, '/');)
                path.push_back(part);
            path.erase(path.begin());
            if (file.find(path, "Polylength") != nullptr &&
                file.numbers(path, "Polylength") ==
                    std::vector<std::uint32_t>{static_cast<std::uint32_t>(nodeCount_)})
                return path;
        }
        return {};
    }

    void checkModel()
    {
        ModelFile file(model());
        ModelFile::Path const shape = shapeOf(file);
        ASSERT_FALSE(shape.empty());
        std::vector<Point> const rows = rowsOf(file.floats(shape, "Coordinates"));
        std::vector<Point> nodes;
        for (std::uint32_t const row : file.numbers(shape, "Connectivity"))
            nodes.push_back(rows.at(row));
        ASSERT_EQ(std::set<Point>(nodes.begin(), nodes.end()).size(), nodeCount_);
        checkPlaces(nodes);
        checkSize(nodes);
        if (expectation_.hasFields) {
            checkField(file, shape, "FIRST", rows, first);
            checkField(file, shape, "SECOND", rows, second);
        }
    }

    /// `mox check` finds nothing, whatever format the model comes from.
    void checkMeaning() const
    {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(Mox::checkFile({model()}, out, err), 0);
        EXPECT_EQ(out.str().rfind(model() + ": ok (", 0), 0U) << out.str() << err.str();
    }

    void checkPlaces(std::vector<Point> const& nodes) const
    {
        std::size_t place = shape_.corners.size();
        for (std::string const& word :
             wordsOf(furtherNodes(element_.shape, nodeCount_, expectation_.elementType)))
            if (place < nodes.size())
                expectNear(nodes[place++], middleOf(word, nodes), "node in the middle of " + word);
        EXPECT_EQ(place, nodes.size());
    }

    void checkSize(std::vector<Point> const& nodes) const
    {
        Mox::Check::ElementKinds kinds(std::max(shape_.dimension, 1), expectation_.elementType);
        Mox::Check::ElementKind const* const kind =
            kinds.of(static_cast<std::uint32_t>(nodes.size()));
        ASSERT_NE(kind, nullptr);
        EXPECT_NEAR(Mox::Check::ElementSize(*kind, nodes).value(), sizeOf(shape_), tolerance);
    }

    static void checkField(ModelFile& file, ModelFile::Path const& shape, std::string const& name,
                           std::vector<Point> const& rows, double (*function)(Point const&))
    {
        std::string step;
        for (std::string const& dataset : file.datasets(shape))
            if (dataset.compare(0, name.size() + 1, name + "|") == 0)
                step = dataset.substr(name.size() + 1);
        std::vector<float> const values = file.floats(shape, name, step);
        ASSERT_EQ(values.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_NEAR(values[i], function(rows[i]), 20 * tolerance) << name;
    }

    void checkExport()
    {
        Export::exportModel(model(), folder_.path("out.vtu").string(), Export::ExportOptions());
        vtkNew<vtkXMLUnstructuredGridReader> reader;
        reader->SetFileName(folder_.path("out.vtu").c_str());
        reader->Update();
        vtkUnstructuredGrid& grid = *reader->GetOutput();
        vtkIdType index = 0;
        while (index < grid.GetNumberOfCells() &&
               grid.GetCell(index)->GetNumberOfPoints() != static_cast<vtkIdType>(nodeCount_))
            ++index;
        ASSERT_LT(index, grid.GetNumberOfCells());
        checkCell(*grid.GetCell(index));
        if (expectation_.hasFields) {
            checkArray(grid, "FIRST", first);
            checkArray(grid, "SECOND", second);
        }
    }

    static std::vector<Point> pointsIn(vtkCell& cell)
    {
        std::vector<Point> points(static_cast<std::size_t>(cell.GetNumberOfPoints()));
        for (std::size_t i = 0; i < points.size(); ++i)
            cell.GetPoints()->GetPoint(static_cast<vtkIdType>(i), points[i].data());
        return points;
    }

    /// Lines and faces know themselves where they have nodes beside their corners.
    static void checkSide(vtkCell& side)
    {
        std::vector<Point> const points = pointsIn(side);
        if (side.GetCellDimension() == 1 && points.size() == 3)
            expectNear(points[2], middleOf("12", points), "middle of a line of VTK");
        if (points.size() == 7)
            expectNear(points[6], middleOf("123", points), "centre of a triangle of VTK");
        if (points.size() == 9)
            expectNear(points[8], middleOf("1234", points), "centre of a quadrangle of VTK");
    }

    void checkCell(vtkCell& cell) const
    {
        EXPECT_EQ(cell.GetCellDimension(), shape_.dimension);
        if (cell.GetCellDimension() < 3)
            checkSide(cell);
        for (int i = 0; i < cell.GetNumberOfEdges(); ++i)
            checkSide(*cell.GetEdge(i));
        double volume = 0;
        for (int i = 0; i < cell.GetNumberOfFaces(); ++i) {
            checkSide(*cell.GetFace(i));
            volume += volumeBelow(*cell.GetFace(i));
        }
        if (shape_.dimension == 3) {
            EXPECT_NEAR(volume, sizeOf(shape_), tolerance) << "of the cell of VTK";
            if (nodeCount_ == 19 || nodeCount_ == 27)
                expectNear(pointsIn(cell).back(), meanOf(cornersOf(cell)), "centre of the cell");
        }
    }

    std::vector<Point> cornersOf(vtkCell& cell) const
    {
        std::vector<Point> points = pointsIn(cell);
        points.resize(shape_.corners.size());
        return points;
    }

    /// Of the pyramid between a face and the origin. The faces of a cell are counter-clockwise seen
    /// from outside, and have as many corners as edges.
    static double volumeBelow(vtkCell& face)
    {
        std::vector<Point> const points = pointsIn(face);
        Point area = {};
        for (std::size_t i = 2; i < static_cast<std::size_t>(face.GetNumberOfEdges()); ++i)
            area = area + 0.5 * cross(points[i - 1] - points[0], points[i] - points[0]);
        return dot(points[0], area) / 3;
    }

    static void checkArray(vtkUnstructuredGrid& grid, char const* name,
                           double (*function)(Point const&))
    {
        vtkDataArray* const values = grid.GetPointData()->GetArray(name);
        ASSERT_NE(values, nullptr) << name;
        for (vtkIdType i = 0; i < grid.GetNumberOfPoints(); ++i) {
            Point point = {};
            grid.GetPoint(i, point.data());
            EXPECT_NEAR(values->GetComponent(i, 0), function(point), 20 * tolerance) << name;
        }
    }

    Element const& element_;
    Expectation const& expectation_;
    Shape const& shape_;
    std::size_t nodeCount_;
    Support::Folder folder_;
    std::string model_ = folder_.path("out.mox").string();
};

} // namespace

std::vector<Point> pointsOf(Element const& element)
{
    std::vector<Point> points;
    for (std::string const& word : wordsOf(element.nodes))
        points.push_back(skewed(middleOf(word, shapes().at(element.shape).corners)));
    return points;
}

double first(Point const& point)
{
    return point[0] + 2 * point[1] + 3 * point[2];
}

double second(Point const& point)
{
    return point[0] * point[0];
}

void expectInOrder(Element const& element, Writer const& write, Expectation const& expectation)
{
    SCOPED_TRACE(element.type + " of nodes " + element.nodes);
    Passage(element, expectation).run(write);
}

} // namespace ElementOrder
