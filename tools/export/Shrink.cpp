#include "Shrink.h"

#include <cstddef>

namespace Export {

namespace {

/// Bytes of a picture, row after row.
struct Bytes
{
    unsigned char* first;
    std::size_t width;
    std::size_t components;

    explicit Bytes(vtkImageData& image)
        : first(static_cast<unsigned char*>(image.GetScalarPointer())),
          width(static_cast<std::size_t>(image.GetDimensions()[0])),
          components(static_cast<std::size_t>(image.GetNumberOfScalarComponents()))
    {}

    unsigned char& at(std::size_t x, std::size_t y, std::size_t component) const
    {
        return first[(y * width + x) * components + component];
    }
};

unsigned char meanOf(Bytes const& bytes, std::size_t left, std::size_t low, std::size_t component,
                     std::size_t factor)
{
    std::size_t sum = 0;
    for (std::size_t y = 0; y < factor; ++y)
        for (std::size_t x = 0; x < factor; ++x)
            sum += bytes.at(left + x, low + y, component);
    std::size_t const count = factor * factor;
    return static_cast<unsigned char>((sum + count / 2) / count);
}

} // namespace

vtkSmartPointer<vtkImageData> shrink(vtkImageData& image, int factor)
{
    auto small = vtkSmartPointer<vtkImageData>::New();
    int const height = image.GetDimensions()[1] / factor;
    small->SetDimensions(image.GetDimensions()[0] / factor, height, 1);
    small->AllocateScalars(VTK_UNSIGNED_CHAR, image.GetNumberOfScalarComponents());
    Bytes const from(image);
    Bytes const to(*small);
    auto const step = static_cast<std::size_t>(factor);
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y)
        for (std::size_t x = 0; x < to.width; ++x)
            for (std::size_t component = 0; component < to.components; ++component)
                to.at(x, y, component) = meanOf(from, x * step, y * step, component, step);
    return small;
}

} // namespace Export
