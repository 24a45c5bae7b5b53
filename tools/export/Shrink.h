#ifndef EXPORT_SHRINK_H
#define EXPORT_SHRINK_H

#include <vtkImageData.h>
#include <vtkSmartPointer.h>

namespace Export {

/// The picture with each square of so many pixels made one of their mean colour, which smooths all
/// edges. Width and height must be multiples of the factor, colours be bytes.
vtkSmartPointer<vtkImageData> shrink(vtkImageData& image, int factor);

} // namespace Export

#endif
