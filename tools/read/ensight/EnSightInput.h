#ifndef READ_ENSIGHT_ENSIGHTINPUT_H
#define READ_ENSIGHT_ENSIGHTINPUT_H

#include "EnSightCase.h"
#include "read/vtk/PipelineInput.h"

#include <exchange/Report.h>

#include <filesystem>

class vtkGenericEnSightReader;

namespace VtkRead {

/// A case of EnSight. Its reader takes a file that was cut off for whole, so that the files are
/// walked through before, and every variable of the case is looked for in what it made.
class EnSightInput : public PipelineInput
{
public:
    EnSightInput(std::filesystem::path const& path, Exchange::Report& report);

    vtkSmartPointer<vtkDataObject> read(std::size_t step) override;

private:
    EnSightInput(vtkSmartPointer<vtkGenericEnSightReader> const& reader, EnSightCase description);

    bool isToBeThere(std::string const& variable, std::size_t step) const;

    vtkSmartPointer<vtkGenericEnSightReader> reader_;
    EnSightCase case_;
};

} // namespace VtkRead

#endif
