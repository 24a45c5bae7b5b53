#include "Readers.h"

#include "CollectionInput.h"
#include "PipelineInput.h"
#include "XmlInput.h"

#include <vtkCGNSReader.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkOpenFOAMReader.h>

namespace VtkRead {

namespace {

vtkSmartPointer<vtkAlgorithm> legacyReader(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<vtkGenericDataObjectReader>::New();
    reader->SetFileName(path.c_str());
    reader->ReadAllScalarsOn();
    reader->ReadAllVectorsOn();
    reader->ReadAllNormalsOn();
    reader->ReadAllTensorsOn();
    reader->ReadAllColorScalarsOn();
    reader->ReadAllTCoordsOn();
    reader->ReadAllFieldsOn();
    return reader;
}

vtkSmartPointer<vtkAlgorithm> cgnsReader(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<vtkCGNSReader>::New();
    reader->SetFileName(path.c_str());
    reader->SetDoublePrecisionMesh(1);
    reader->UpdateInformation();
    reader->EnableAllBases();
    reader->EnableAllFamilies();
    reader->EnableAllPointArrays();
    reader->EnableAllCellArrays();
    return reader;
}

/// A case is a folder; any file in it stands for it, or else the one that steers the solver.
std::filesystem::path fileOfCase(std::filesystem::path const& path)
{
    return std::filesystem::is_directory(path) ? path / "system" / "controlDict" : path;
}

vtkSmartPointer<vtkAlgorithm> openFoamReader(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<vtkOpenFOAMReader>::New();
    reader->SetFileName(std::filesystem::absolute(fileOfCase(path)).c_str());
    reader->DecomposePolyhedraOff();
    reader->CreateCellToPointOff();
    reader->SkipZeroTimeOff();
    reader->UpdateInformation();
    reader->EnableAllPatchArrays();
    reader->EnableAllCellArrays();
    reader->EnableAllPointArrays();
    reader->EnableAllLagrangianArrays();
    return reader;
}

std::unique_ptr<Input> pipelineOf(vtkSmartPointer<vtkAlgorithm> const& reader,
                                  bool inventsTime = false)
{
    return std::make_unique<PipelineInput>(reader, inventsTime);
}

} // namespace

std::unique_ptr<Input> openInput(FileKind kind, std::filesystem::path const& path)
{
    constexpr bool inventsTime = true;
    switch (kind) {
    case FileKind::Xml:
        return std::make_unique<XmlInput>(path);
    case FileKind::Collection:
        return std::make_unique<CollectionInput>(path);
    case FileKind::Legacy:
        return pipelineOf(legacyReader(path), inventsTime);
    case FileKind::Cgns:
        return pipelineOf(cgnsReader(path), inventsTime);
    default:
        return pipelineOf(openFoamReader(path));
    }
}

} // namespace VtkRead
