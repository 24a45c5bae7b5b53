// A series of .vtu files, one for each step: made, copied by VTK's own reader and writer, and
// translated into a model. bench/translate runs each of the three in a process of its own.

#include "Arguments.h"
#include "HostData.h"
#include "Measurement.h"

#include <exchange/Translation.h>
#include <read/vtk/Source.h>

#include <vtkCellArray.h>
#include <vtkCellType.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkZLibDataCompressor.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

using namespace Bench;

namespace {

constexpr int deflateLevel = 6;
/// Later steps repeat these: all steps of a large result would not fit into memory.
constexpr std::size_t distinctSteps = 4;

std::filesystem::path inputFolder(Arguments const& arguments)
{
    return std::filesystem::path(arguments.text("output")) / "series";
}

std::filesystem::path fileOf(std::filesystem::path const& folder, std::size_t step)
{
    return folder / ("step" + std::to_string(step) + ".vtu");
}

vtkSmartPointer<vtkFloatArray> arrayOf(std::vector<float> const& values, int width,
                                       char const* name)
{
    auto array = vtkSmartPointer<vtkFloatArray>::New();
    array->SetName(name);
    array->SetNumberOfComponents(width);
    array->SetNumberOfValues(static_cast<vtkIdType>(values.size()));
    std::copy(values.begin(), values.end(), array->GetPointer(0));
    return array;
}

vtkSmartPointer<vtkUnstructuredGrid> gridOf(Mesh const& mesh)
{
    constexpr std::size_t corners = 8;
    auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
    vtkNew<vtkPoints> points;
    points->SetData(arrayOf(mesh.coordinates, 3, "Points"));
    grid->SetPoints(points);
    vtkNew<vtkCellArray> cells;
    for (std::size_t cell = 0; cell < mesh.cells; ++cell) {
        cells->InsertNextCell(corners);
        for (std::size_t corner = 0; corner < corners; ++corner)
            cells->InsertCellPoint(mesh.connectivity[cell * corners + corner]);
    }
    grid->SetCells(VTK_HEXAHEDRON, cells);
    return grid;
}

void write(vtkUnstructuredGrid* grid, std::filesystem::path const& path)
{
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    vtkNew<vtkZLibDataCompressor> compressor;
    compressor->SetCompressionLevel(deflateLevel);
    writer->SetFileName(path.c_str());
    writer->SetCompressor(compressor);
    writer->SetDataModeToAppended();
    writer->EncodeAppendedDataOff();
    writer->SetHeaderTypeToUInt64();
    writer->SetInputDataObject(grid);
    writer->Write();
    if (writer->GetErrorCode() != 0)
        throw std::runtime_error("VTK can't write the file");
}

void makeSeries(Arguments const& arguments)
{
    std::filesystem::path const folder = inputFolder(arguments);
    std::filesystem::create_directories(folder);
    TransientResult const result = transientResult(arguments.number("edge"), distinctSteps);
    auto const grid = gridOf(result.mesh);
    std::ofstream series(folder / "series.pvd");
    series << "<VTKFile type=\"Collection\" version=\"0.1\"><Collection>\n";
    for (std::size_t step = 0; step < arguments.number("steps"); ++step) {
        StepFields const& fields = result.steps[step % distinctSteps];
        grid->GetPointData()->AddArray(arrayOf(fields.displacement, 3, "Displacement"));
        grid->GetPointData()->AddArray(arrayOf(fields.stress, 6, "Stress"));
        write(grid, fileOf(folder, step));
        series << "<DataSet timestep=\"" << step << "\" file=\""
               << fileOf(folder, step).filename().string() << "\"/>\n";
    }
    series << "</Collection></VTKFile>\n";
}

void copyByVtk(Arguments const& arguments)
{
    std::filesystem::path const output = std::filesystem::path(arguments.text("output")) / "copy";
    std::filesystem::create_directories(output);
    std::filesystem::path const input = inputFolder(arguments);
    measureWriting(output.string(), bytesOfFolder(input.string()), [&] {
        for (std::size_t step = 0; step < arguments.number("steps"); ++step) {
            vtkNew<vtkXMLUnstructuredGridReader> reader;
            reader->SetFileName(fileOf(input, step).c_str());
            reader->Update();
            write(reader->GetOutput(), fileOf(output, step));
        }
    });
}

void translateSeries(Arguments const& arguments)
{
    std::filesystem::path const output = std::filesystem::path(arguments.text("output")) / "model";
    std::filesystem::create_directories(output);
    std::filesystem::path const input = inputFolder(arguments);
    measureWriting(output.string(), bytesOfFolder(input.string()), [&] {
        Exchange::Report report;
        Exchange::translate(
            input / "series.pvd",
            [](std::filesystem::path const& path, Exchange::Report& told) {
                return VtkRead::open(VtkRead::FileKind::Collection, path, told);
            },
            output / "model.mox", {}, report);
    });
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv,
                       {{"make", makeSeries}, {"copy", copyByVtk}, {"translate", translateSeries}});
}
