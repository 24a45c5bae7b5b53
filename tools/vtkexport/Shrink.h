#ifndef VTKEXPORT_SHRINK_H
#define VTKEXPORT_SHRINK_H

#include <vtkImageData.h>
#include <vtkSmartPointer.h>

namespace VtkExport {

/// The picture with each square of so many pixels made one of their mean colour, which smooths all
/// edges. Width and height must be multiples of the factor, colours be bytes.
vtkSmartPointer<vtkImageData> shrink(vtkImageData& image, int factor);

} // namespace VtkExport

#endif
