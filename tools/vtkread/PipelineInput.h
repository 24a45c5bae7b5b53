#ifndef VTKREAD_PIPELINEINPUT_H
#define VTKREAD_PIPELINEINPUT_H

#include "Input.h"

#include <vtkAlgorithm.h>

namespace VtkRead {

/// One of VTK's readers.
class PipelineInput : public Input
{
public:
    /// The reader knows its file.
    explicit PipelineInput(vtkSmartPointer<vtkAlgorithm> reader);

    std::vector<double> const& times() const override { return times_; }
    vtkSmartPointer<vtkDataObject> read(std::size_t step) override;

private:
    vtkSmartPointer<vtkAlgorithm> reader_;
    std::vector<double> times_;
};

} // namespace VtkRead

#endif
