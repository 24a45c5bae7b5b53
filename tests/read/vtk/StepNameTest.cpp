#include "OpenedFile.h"

#include "support/Folder.h"
#include "support/VtkGrids.h"

#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkImageData.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStringArray.h>
#include <vtkStructuredGrid.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLMultiBlockDataWriter.h>
#include <vtkXMLPolyDataWriter.h>
#include <vtkXMLRectilinearGridWriter.h>
#include <vtkXMLStructuredGridWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace Support;
using VtkRead::FileKind;
using Names = std::vector<std::string>;

void callStep(vtkDataObject& object, std::string const& step)
{
    vtkNew<vtkStringArray> name;
    name->SetName("Step");
    name->InsertNextValue(step);
    object.GetFieldData()->AddArray(name);
}

vtkSmartPointer<vtkUnstructuredGrid> triangle()
{
    return gridOf(3, {cellOver(VTK_TRIANGLE, 3)});
}

vtkSmartPointer<vtkPolyData> polygon()
{
    auto polygon = vtkSmartPointer<vtkPolyData>::New();
    polygon->SetPoints(somePoints(3));
    polygon->AllocateEstimate(1, 3);
    vtkIdType const points[] = {0, 1, 2};
    polygon->InsertNextCell(VTK_TRIANGLE, 3, points);
    return polygon;
}

vtkSmartPointer<vtkImageData> regularGrid()
{
    auto grid = vtkSmartPointer<vtkImageData>::New();
    grid->SetDimensions(2, 2, 2);
    return grid;
}

vtkSmartPointer<vtkStructuredGrid> structured()
{
    auto grid = vtkSmartPointer<vtkStructuredGrid>::New();
    grid->SetDimensions(2, 2, 2);
    grid->SetPoints(somePoints(8));
    return grid;
}

vtkSmartPointer<vtkRectilinearGrid> rectilinear()
{
    auto grid = vtkSmartPointer<vtkRectilinearGrid>::New();
    auto const axis = arrayOf<vtkDoubleArray>("axis", 1, {0, 1});
    grid->SetDimensions(2, 2, 2);
    grid->SetXCoordinates(axis);
    grid->SetYCoordinates(axis);
    grid->SetZCoordinates(axis);
    return grid;
}

/// The text of an XML file that consists of one piece.
/// \param content the elements that the piece has, such as its points
std::string pieceOf(std::string const& type, std::string const& content, std::string const& piece)
{
    return "<VTKFile type=\"" + type + "\" version=\"1.0\"><" + type +
           " WholeExtent=\"0 1 0 1 0 1\" GhostLevel=\"0\" Origin=\"0 0 0\" Spacing=\"1 1 1\">" +
           content + "<Piece Extent=\"0 1 0 1 0 1\" Source=\"" + piece + "\"/></" + type +
           "></VTKFile>";
}

constexpr char const* anyPoints =
    "<PPoints><PDataArray type=\"Float64\" Name=\"Points\" NumberOfComponents=\"3\"/></PPoints>";
constexpr char const* anyAxes =
    "<PCoordinates><PDataArray type=\"Float64\" Name=\"x\"/><PDataArray type=\"Float64\" "
    "Name=\"y\"/><PDataArray type=\"Float64\" Name=\"z\"/></PCoordinates>";

/// A kind of files, and how a test writes one with the name of a step in it.
struct WrittenKind
{
    std::string ending;
    std::function<void(Folder const&, std::string const& file, std::string const& step)> write;
};

template <typename Writer, typename Make>
WrittenKind kind(std::string const& ending, Make const& make)
{
    return {ending, [make](Folder const& folder, std::string const& file, std::string const& step) {
                auto const object = make();
                callStep(*object, step);
                writeWith<Writer>(folder.path(file), object);
            }};
}

WrittenKind inPieces(WrittenKind const& piece, std::string const& type, std::string const& content)
{
    return {"p" + piece.ending,
            [=](Folder const& folder, std::string const& file, std::string const& step) {
                std::string const nameOfPiece = "piece_" + file + "." + piece.ending;
                piece.write(folder, nameOfPiece, step);
                folder.write(file, pieceOf(type, content, nameOfPiece));
            }};
}

std::vector<WrittenKind> writtenKinds()
{
    WrittenKind const vtu = kind<vtkXMLUnstructuredGridWriter>("vtu", triangle);
    WrittenKind const vtp = kind<vtkXMLPolyDataWriter>("vtp", polygon);
    WrittenKind const vti = kind<vtkXMLImageDataWriter>("vti", regularGrid);
    WrittenKind const vts = kind<vtkXMLStructuredGridWriter>("vts", structured);
    WrittenKind const vtr = kind<vtkXMLRectilinearGridWriter>("vtr", rectilinear);
    WrittenKind const vtm = kind<vtkXMLMultiBlockDataWriter>("vtm", [] {
        auto blocks = vtkSmartPointer<vtkMultiBlockDataSet>::New();
        blocks->SetBlock(0, triangle());
        return blocks;
    });
    return {vtu,
            vtp,
            vti,
            vts,
            vtr,
            vtm,
            inPieces(vtu, "PUnstructuredGrid", anyPoints),
            inPieces(vtp, "PPolyData", anyPoints),
            inPieces(vti, "PImageData", ""),
            inPieces(vts, "PStructuredGrid", anyPoints),
            inPieces(vtr, "PRectilinearGrid", anyAxes)};
}

class StepName : public ::testing::TestWithParam<WrittenKind>
{
protected:
    OpenedFile openedSeries(std::string const& first, std::string const& second) const
    {
        return OpenedFile(
            FileKind::Collection,
            folder_.write(
                "in.pvd",
                "<VTKFile type=\"Collection\"><Collection><DataSet timestep=\"1\" file=\"" + first +
                    "\"/><DataSet timestep=\"2\" file=\"" + second +
                    "\"/></Collection></VTKFile>"));
    }

    Folder folder_;
};

INSTANTIATE_TEST_SUITE_P(Kinds, StepName, ::testing::ValuesIn(writtenKinds()),
                         [](auto const& tested) { return tested.param.ending; });

Names stepNamesOf(OpenedFile const& file)
{
    Names names;
    for (Exchange::StepInfo const& step : file.steps)
        names.push_back(step.name);
    return names;
}

TEST_P(StepName, OfEachFileIsTheOneInItsFieldData)
{
    WrittenKind const& kind = GetParam();
    kind.write(folder_, "a." + kind.ending, "wind");
    kind.write(folder_, "b." + kind.ending, "snow");
    OpenedFile const file = openedSeries("a." + kind.ending, "b." + kind.ending);
    EXPECT_EQ(stepNamesOf(file), (Names{"wind", "snow"}));
    for (Exchange::StepInfo const& step : file.steps)
        EXPECT_TRUE(step.attributes.empty());
    ASSERT_EQ(file.parts.size(), 1U);
    EXPECT_EQ(file.parts[0].elementCount(), 1U);
    EXPECT_EQ(file.warnings(), Names());
}

} // namespace
