#include "Openers.h"

Exchange::SourceOpener vtkOpener(VtkRead::FileKind /*kind*/)
{
    return {};
}
