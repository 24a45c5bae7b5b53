#include "Readers.h"

#include "CollectionInput.h"
#include "PipelineInput.h"

#include <exchange/Error.h>

#include <vtkCGNSReader.h>
#include <vtkDataArraySelection.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkGenericEnSightReader.h>
#include <vtkOpenFOAMReader.h>
#include <vtkXMLGenericDataObjectReader.h>

#include <stdexcept>

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

vtkSmartPointer<vtkAlgorithm> enSightReader(std::filesystem::path const& path)
{
    auto reader = vtkSmartPointer<vtkGenericEnSightReader>::New();
    reader->SetCaseFileName(path.c_str());
    reader->ReadAllVariablesOn();
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

vtkSmartPointer<vtkAlgorithm> readerOf(FileKind kind, std::filesystem::path const& path)
{
    switch (kind) {
    case FileKind::Xml:
        return xmlReader(path);
    case FileKind::Legacy:
        return legacyReader(path);
    case FileKind::EnSight:
        return enSightReader(path);
    case FileKind::Cgns:
        return cgnsReader(path);
    case FileKind::OpenFoam:
        return openFoamReader(path);
    default:
        throw std::logic_error("no single reader is for this kind of file");
    }
}

bool inventsTime(FileKind kind)
{
    return kind == FileKind::Legacy || kind == FileKind::Cgns;
}

} // namespace

vtkSmartPointer<vtkAlgorithm> xmlReader(std::filesystem::path const& path)
{
    if (!std::filesystem::is_regular_file(path))
        throw Exchange::Error("There is no file '" + path.string() + "'.");
    auto reader = vtkSmartPointer<vtkXMLGenericDataObjectReader>::New();
    reader->SetFileName(path.c_str());
    return reader;
}

std::unique_ptr<Input> openInput(FileKind kind, std::filesystem::path const& path)
{
    if (kind == FileKind::Collection)
        return std::make_unique<CollectionInput>(path);
    return std::make_unique<PipelineInput>(readerOf(kind, path), inventsTime(kind));
}

} // namespace VtkRead
