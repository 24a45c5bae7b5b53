#include "Openers.h"

#include <read/vtk/Source.h>

Exchange::SourceOpener vtkOpener(VtkRead::FileKind kind)
{
    return [kind](std::filesystem::path const& path, Exchange::Report& report) {
        return VtkRead::open(kind, path, report);
    };
}
