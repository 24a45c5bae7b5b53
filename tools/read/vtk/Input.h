#ifndef READ_VTK_INPUT_H
#define READ_VTK_INPUT_H

#include <vtkDataObject.h>
#include <vtkSmartPointer.h>

#include <cstddef>
#include <string>
#include <vector>

namespace VtkRead {

/// Where data objects come from, one for each step.
class Input
{
public:
    Input() = default;
    virtual ~Input() = default;
    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;

    /// Empty when the files tell no time; there is one step all the same.
    virtual std::vector<double> const& times() const = 0;

    /// What a step is called, as far as that can be told without its mesh and values; else empty.
    virtual std::string stepName(std::size_t /*step*/) { return {}; }

    /// The object of one step; whatever was read before may be gone then.
    virtual vtkSmartPointer<vtkDataObject> read(std::size_t step) = 0;
};

} // namespace VtkRead

#endif
