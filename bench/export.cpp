// Time and memory of exporting a model, next to VTK reading and writing the same grid. A model to
// export is made by bench_moxwriter; what is copied is what the export made:
//
//   bench_moxwriter transient --edge 100 --steps 1 --output model
//   bench_export export --input model/result.mox --output exported
//   bench_export copy --input exported/result.vtu --output copied

#include "Arguments.h"
#include "Measurement.h"

#include "export/Export.h"

#include <vtkNew.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <filesystem>
#include <stdexcept>

using namespace Bench;

namespace {

void exportModel(Arguments const& arguments)
{
    std::string const& input = arguments.text("input");
    std::string const& folder = arguments.text("output");
    std::filesystem::create_directories(folder);
    measureWriting(folder, std::filesystem::file_size(input), [&] {
        Export::ExportOptions options;
        options.overwrite = true;
        Export::exportModel(input, folder + "/result.vtu", options);
    });
}

void copyGrid(std::string const& input, std::string const& output)
{
    vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(input.c_str());
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    writer->SetInputConnection(reader->GetOutputPort());
    writer->SetFileName(output.c_str());
    writer->SetDataModeToAppended();
    writer->EncodeAppendedDataOff();
    writer->SetHeaderTypeToUInt64();
    if (writer->Write() == 0 || reader->GetErrorCode() != 0 || writer->GetErrorCode() != 0)
        throw std::runtime_error("VTK can't copy the file");
}

void copy(Arguments const& arguments)
{
    std::string const& input = arguments.text("input");
    std::string const& folder = arguments.text("output");
    std::filesystem::create_directories(folder);
    measureWriting(folder, std::filesystem::file_size(input),
                   [&] { copyGrid(input, folder + "/result.vtu"); });
}

} // namespace

int main(int argc, char** argv)
{
    return runWorkload(argc, argv, {{"export", exportModel}, {"copy", copy}});
}
