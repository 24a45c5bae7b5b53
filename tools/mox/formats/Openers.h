#ifndef MOX_FORMATS_OPENERS_H
#define MOX_FORMATS_OPENERS_H

#include <exchange/Translation.h>
#include <read/vtk/FileKind.h>

// What opens files of other formats. Each of these gives nothing where the library that it takes is
// not built in: which definition is linked is chosen when the build is configured.

Exchange::SourceOpener vtkOpener(VtkRead::FileKind kind);
Exchange::SourceOpener exodusOpener();
Exchange::SourceOpener gmshOpener();

#endif
