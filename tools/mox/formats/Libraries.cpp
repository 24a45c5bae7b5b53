#include "Libraries.h"

#include "FormatsProgram.h"

#ifdef MOX_WITH_VTK
#include <read/vtk/Source.h>
#else
#include <export/Error.h>
#endif
#ifdef MOX_WITH_EXODUS
#include <read/exodus/Source.h>
#endif
#ifdef MOX_WITH_GMSH
#include <read/gmsh/Source.h>
#endif

#include <exception>
#include <iostream>

namespace Mox {

#ifdef MOX_WITH_VTK

Exchange::SourceOpener vtkOpener(VtkRead::FileKind kind)
{
    return [kind](std::filesystem::path const& path, Exchange::Report& report) {
        return VtkRead::open(kind, path, report);
    };
}

Export::ExportSummary exportWithVtk(std::string const& input, std::string const& output,
                                    Export::ExportOptions const& options)
{
    return Export::exportModel(input, output, options);
}

Export::ViewSummary viewWithVtk(std::string const& input, std::string const& output,
                                Export::ViewOptions const& options)
{
    return Export::viewModel(input, output, options);
}

#else

namespace {

[[noreturn]] void failWithoutVtk()
{
    throw Export::Error(
        "This mox was built without VTK; it needs the package libvtk9-dev when it is built.");
}

} // namespace

Exchange::SourceOpener vtkOpener(VtkRead::FileKind /*kind*/)
{
    return {};
}

Export::ExportSummary exportWithVtk(std::string const& /*input*/, std::string const& /*output*/,
                                    Export::ExportOptions const& /*options*/)
{
    failWithoutVtk();
}

Export::ViewSummary viewWithVtk(std::string const& /*input*/, std::string const& /*output*/,
                                Export::ViewOptions const& /*options*/)
{
    failWithoutVtk();
}

#endif

Exchange::SourceOpener exodusOpener()
{
#ifdef MOX_WITH_EXODUS
    return Exodus::open;
#else
    return {};
#endif
}

Exchange::SourceOpener gmshOpener()
{
#ifdef MOX_WITH_GMSH
    return Gmsh::open;
#else
    return {};
#endif
}

namespace {

/// The program that has the library; null where this program has it, or none has.
char const* programWith(Library library)
{
    switch (library) {
#ifdef MOX_VTK_PROGRAM
    case Library::Vtk:
        return MOX_VTK_PROGRAM;
#endif
#ifdef MOX_EXODUS_PROGRAM
    case Library::Exodus:
        return MOX_EXODUS_PROGRAM;
#endif
#ifdef MOX_GMSH_PROGRAM
    case Library::Gmsh:
        return MOX_GMSH_PROGRAM;
#endif
    default:
        return nullptr;
    }
}

} // namespace

int runWithLibrary(Library library, std::string const& command, std::function<int()> const& action)
{
    char const* const program = programWith(library);
    if (program == nullptr)
        return action();
    try {
        becomeFormatsProgram(program);
    } catch (std::exception const& error) {
        std::cerr << command << ": " << error.what() << '\n';
        return 1;
    }
}

} // namespace Mox
