#ifndef TESTS_EXPORT_PIXELS_H
#define TESTS_EXPORT_PIXELS_H

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGReader.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace ExportTest {

using Color = std::array<int, 3>;

inline bool areAlike(Color const& left, Color const& right, int tolerance)
{
    return std::abs(left[0] - right[0]) <= tolerance && std::abs(left[1] - right[1]) <= tolerance &&
           std::abs(left[2] - right[2]) <= tolerance;
}

/// The pixels of a PNG file.
class Pixels
{
public:
    explicit Pixels(std::string const& file)
    {
        if (reader_->CanReadFile(file.c_str()) == 0)
            throw std::runtime_error("no picture in " + file);
        reader_->SetFileName(file.c_str());
        reader_->Update();
    }

    int width() const { return reader_->GetOutput()->GetDimensions()[0]; }
    int height() const { return reader_->GetOutput()->GetDimensions()[1]; }

    /// The colour of the pixel `x` columns and `y` rows from the lower left corner.
    Color at(int x, int y) const
    {
        auto const* const pixel =
            static_cast<unsigned char const*>(reader_->GetOutput()->GetScalarPointer(x, y, 0));
        return {pixel[0], pixel[1], pixel[2]};
    }

    /// How many pixels have nearly that colour.
    int count(Color const& color, int tolerance = 4) const
    {
        return countIf([&](Color const& pixel) { return areAlike(pixel, color, tolerance); });
    }

    template <typename Condition>
    int countIf(Condition const& condition) const
    {
        int count = 0;
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x)
                count += condition(at(x, y)) ? 1 : 0;
        return count;
    }

private:
    vtkNew<vtkPNGReader> reader_;
};

} // namespace ExportTest

#endif
