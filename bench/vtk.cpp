// The transient workload by VTK's XML writer: one .vtu with a time series, appended raw data,
// deflated at level 6. The mesh is written once, which a file for each step would not do.

#include "Arguments.h"
#include "HostData.h"
#include "Measurement.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnsignedIntArray.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkZLibDataCompressor.h>

#include <numeric>
#include <stdexcept>

using namespace Bench;

namespace {

constexpr int DeflateLevel = 6;

/// Shows values to VTK where they are. It asks for a pointer to write through, and does not.
template <typename ArrayT, typename T>
vtkSmartPointer<ArrayT> viewOf(std::vector<T> const& values, int width, char const* name)
{
    constexpr int keep = 1;
    auto array = vtkSmartPointer<ArrayT>::New();
    array->SetName(name);
    array->SetNumberOfComponents(width);
    using Value = typename ArrayT::ValueType;
    array->SetArray(reinterpret_cast<Value*>(const_cast<T*>(values.data())),
                    static_cast<vtkIdType>(values.size()), keep);
    return array;
}

std::vector<std::int32_t> cellOffsets(Mesh const& mesh)
{
    std::vector<std::int32_t> result(mesh.cells + 1);
    std::partial_sum(mesh.nodesPerCell.begin(), mesh.nodesPerCell.end(), result.begin() + 1);
    return result;
}

/// A host's result as VTK's data model; refers to the host's arrays.
class Grid
{
public:
    explicit Grid(Mesh const& mesh)
        : offsets_(cellOffsets(mesh)), types_(mesh.cells, VTK_HEXAHEDRON)
    {
        vtkNew<vtkPoints> points;
        points->SetData(viewOf<vtkFloatArray>(mesh.coordinates, 3, "Points"));
        grid_->SetPoints(points);
        vtkNew<vtkCellArray> cells;
        cells->SetData(viewOf<vtkTypeInt32Array>(offsets_, 1, "offsets"),
                       viewOf<vtkTypeInt32Array>(mesh.connectivity, 1, "connectivity"));
        grid_->SetCells(viewOf<vtkUnsignedCharArray>(types_, 1, "types"), cells);
        // As point data they would be written again in each step, like all of it.
        grid_->GetFieldData()->AddArray(viewOf<vtkUnsignedIntArray>(mesh.nodeIds, 1, "Node Ids"));
        grid_->GetCellData()->AddArray(viewOf<vtkUnsignedIntArray>(mesh.cellIds, 1, "Element IDs"));
    }

    void show(StepFields const& step)
    {
        vtkPointData* const data = grid_->GetPointData();
        data->AddArray(viewOf<vtkFloatArray>(step.displacement, 3, "Displacement"));
        data->AddArray(viewOf<vtkFloatArray>(step.stress, 6, "Stress"));
    }

    vtkUnstructuredGrid* get() { return grid_; }

private:
    std::vector<std::int32_t> offsets_;
    std::vector<std::uint8_t> types_;
    vtkNew<vtkUnstructuredGrid> grid_;
};

void configure(vtkXMLUnstructuredGridWriter& writer, std::string const& path)
{
    vtkNew<vtkZLibDataCompressor> compressor;
    compressor->SetCompressionLevel(DeflateLevel);
    writer.SetFileName(path.c_str());
    writer.SetCompressor(compressor);
    writer.SetDataModeToAppended();
    writer.EncodeAppendedDataOff();
    writer.SetHeaderTypeToUInt64();
}

void writeSteps(std::string const& path, Grid& grid, std::vector<StepFields> const& steps)
{
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    configure(*writer, path);
    grid.show(steps.front());
    writer->SetInputData(grid.get());
    writer->SetNumberOfTimeSteps(static_cast<int>(steps.size()));
    writer->Start();
    for (StepFields const& step : steps) {
        grid.show(step);
        writer->WriteNextTime(step.time);
    }
    writer->Stop();
    if (writer->GetErrorCode() != 0)
        throw std::runtime_error("VTK can't write the file");
}

void writeTransient(Arguments const& arguments)
{
    std::string const& folder = arguments.text("output");
    TransientResult const result =
        transientResult(arguments.number("edge"), arguments.number("steps"));
    Grid grid(result.mesh);
    measureWriting(folder, result.bytes(),
                   [&] { writeSteps(folder + "/result.vtu", grid, result.steps); });
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, {{"transient", writeTransient}});
}
