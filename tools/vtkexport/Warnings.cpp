#include "vtkexport/Warnings.h"

namespace VtkExport {

void Warnings::add(std::string const& sentence)
{
    if (known_.insert(sentence).second)
        sentences_.push_back(sentence);
}

} // namespace VtkExport
