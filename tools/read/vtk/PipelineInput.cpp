#include "PipelineInput.h"

#include <exchange/Error.h>

#include <vtkErrorCode.h>
#include <vtkInformation.h>
#include <vtkStreamingDemandDrivenPipeline.h>

#include <string>
#include <utility>

namespace VtkRead {

namespace {

std::vector<double> timesOf(vtkAlgorithm& reader)
{
    vtkInformation* const information = reader.GetOutputInformation(0);
    auto* const key = vtkStreamingDemandDrivenPipeline::TIME_STEPS();
    if (information == nullptr || information->Has(key) == 0)
        return {};
    double const* const times = information->Get(key);
    return {times, times + information->Length(key)};
}

void checkErrorCode(vtkAlgorithm& reader)
{
    unsigned long const code = reader.GetErrorCode();
    if (code != vtkErrorCode::NoError)
        throw Exchange::Error(std::string("VTK says: ") +
                              vtkErrorCode::GetStringFromErrorCode(code) + ".");
}

} // namespace

PipelineInput::PipelineInput(vtkSmartPointer<vtkAlgorithm> reader, bool inventsTime)
    : reader_(std::move(reader))
{
    reader_->UpdateInformation();
    checkErrorCode(*reader_);
    times_ = timesOf(*reader_);
    if (inventsTime && times_ == std::vector<double>{0})
        times_.clear();
}

vtkSmartPointer<vtkDataObject> PipelineInput::read(std::size_t step)
{
    if (times_.empty())
        reader_->Update();
    else
        reader_->UpdateTimeStep(times_[step]);
    checkErrorCode(*reader_);
    return reader_->GetOutputDataObject(0);
}

} // namespace VtkRead
