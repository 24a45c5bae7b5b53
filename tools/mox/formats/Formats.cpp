#include "Formats.h"

#include "Libraries.h"

#include <read/ensight/Source.h>
#include <read/frd/Source.h>

#include <algorithm>

namespace Mox {

namespace {

using VtkRead::FileKind;

constexpr char const* vtkPackage = "libvtk9-dev";

bool isFrd(FileProbe const& probe)
{
    return probe.startsWith("    1C") || probe.path().extension() == ".frd";
}

bool isVtkXml(FileProbe const& probe)
{
    return probe.mentions("<VTKFile");
}

bool isCollection(FileProbe const& probe)
{
    return isVtkXml(probe) &&
           (probe.mentions("type=\"Collection\"") || probe.mentions("type='Collection'"));
}

bool isLegacyVtk(FileProbe const& probe)
{
    return probe.startsWith("# vtk DataFile");
}

bool isEnSight(FileProbe const& probe)
{
    return probe.hasLine("FORMAT") && probe.mentions("type:");
}

bool isHdf5(FileProbe const& probe)
{
    return probe.startsWith("\x89HDF\r\n\x1a\n");
}

bool isCgns(FileProbe const& probe)
{
    bool const isAdf = probe.mentions("ADF Database Version");
    return isAdf || (isHdf5(probe) && probe.contains("CGNSLibraryVersion"));
}

bool isOpenFoam(FileProbe const& probe)
{
    auto const hasControl = [](std::filesystem::path const& folder) {
        return std::filesystem::is_regular_file(folder / "system" / "controlDict");
    };
    if (probe.isFolder())
        return hasControl(probe.path());
    std::filesystem::path const folder = std::filesystem::absolute(probe.path()).parent_path();
    if (probe.path().filename() == "controlDict")
        return probe.mentions("FoamFile");
    return probe.path().extension() == ".foam" && hasControl(folder);
}

bool isExodus(FileProbe const& probe)
{
    bool const isClassic =
        probe.startsWith("CDF\x01") || probe.startsWith("CDF\x02") || probe.startsWith("CDF\x05");
    return (isClassic || isHdf5(probe)) && probe.contains("floating_point_word_size");
}

bool isGmsh(FileProbe const& probe)
{
    return probe.hasLine("$MeshFormat");
}

} // namespace

std::vector<Format> const& formats()
{
    static std::vector<Format> const all = {
        {"frd", isFrd, Frd::open},
        {"VTK series", isCollection, vtkOpener(FileKind::Collection), Library::Vtk, vtkPackage},
        {"VTK XML", isVtkXml, vtkOpener(FileKind::Xml), Library::Vtk, vtkPackage},
        {"VTK legacy", isLegacyVtk, vtkOpener(FileKind::Legacy), Library::Vtk, vtkPackage},
        {"Gmsh", isGmsh, gmshOpener(), Library::Gmsh, "libgmsh-dev"},
        {"EnSight", isEnSight, EnSight::open},
        {"CGNS", isCgns, vtkOpener(FileKind::Cgns), Library::Vtk, vtkPackage},
        {"Exodus", isExodus, exodusOpener(), Library::Exodus, "libexodusii-dev"},
        {"OpenFOAM", isOpenFoam, vtkOpener(FileKind::OpenFoam), Library::Vtk, vtkPackage},
    };
    return all;
}

Format const* formatOf(FileProbe const& probe)
{
    auto const found = std::find_if(formats().begin(), formats().end(),
                                    [&](Format const& format) { return format.recognises(probe); });
    return found == formats().end() ? nullptr : &*found;
}

} // namespace Mox
