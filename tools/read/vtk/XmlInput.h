#ifndef READ_VTK_XMLINPUT_H
#define READ_VTK_XMLINPUT_H

#include "Input.h"

#include <vtkSmartPointer.h>

#include <filesystem>
#include <memory>

class vtkXMLReader;

namespace VtkRead {

/// The reader for what one of VTK's XML files holds. Raises `Exchange::Error` when there is no such
/// file, or when it holds no mesh.
vtkSmartPointer<vtkXMLReader> xmlReaderOf(std::filesystem::path const& path);

/// One of VTK's XML files, whatever it holds. Its reader gives the mesh with the first step that it
/// is asked for only, so that each step has a reader of its own.
class XmlInput : public Input
{
public:
    /// Raises `Exchange::Error` when there is no such file.
    explicit XmlInput(std::filesystem::path const& path);

    std::vector<double> const& times() const override { return times_; }
    vtkSmartPointer<vtkDataObject> read(std::size_t step) override;

private:
    std::filesystem::path path_;
    /// The reader that the times are from, until it has read a step.
    std::unique_ptr<Input> fresh_;
    std::vector<double> times_;
};

} // namespace VtkRead

#endif
