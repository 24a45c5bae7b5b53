#ifndef READ_VTK_PIPELINEINPUT_H
#define READ_VTK_PIPELINEINPUT_H

#include "Input.h"

#include <vtkAlgorithm.h>

namespace VtkRead {

/// One of VTK's readers.
class PipelineInput : public Input
{
public:
    /// The reader knows its file. Some readers tell a single time of 0 when their file has none:
    /// of these it is not believed.
    explicit PipelineInput(vtkSmartPointer<vtkAlgorithm> reader, bool inventsTime = false);

    std::vector<double> const& times() const override { return times_; }
    vtkSmartPointer<vtkDataObject> read(std::size_t step) override;

private:
    vtkSmartPointer<vtkAlgorithm> reader_;
    std::vector<double> times_;
};

} // namespace VtkRead

#endif
