#ifndef VTKEXPORT_ERROR_H
#define VTKEXPORT_ERROR_H

#include <stdexcept>

namespace VtkExport {

/// Says in one sentence what is wrong.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace VtkExport

#endif
