#ifndef EXPORT_PICTURE_H
#define EXPORT_PICTURE_H

#include "OffScreenWindow.h"
#include "ShownField.h"
#include "View.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkRenderer.h>
#include <vtkSmartPointer.h>

#include <array>
#include <string>

class vtkTextProperty;

namespace Export {

/// What is to be drawn. Lines without a surface, and the other way round, are left out.
struct PictureContent
{
    /// With values "Shown" on points or cells, or colours "Colors" on cells.
    vtkSmartPointer<vtkPolyData> surface;
    /// Lines along the borders and sharp edges of what is drawn.
    vtkSmartPointer<vtkPolyData> borders;
    /// Lines along the borders and sharp edges of the undeformed shapes.
    vtkSmartPointer<vtkPolyData> undeformed;
    /// Edges of the elements.
    vtkSmartPointer<vtkPolyData> edges;
    std::optional<ShownField> field;
    std::string title;
    std::string subtitle;
    Camera camera = Camera::Iso;
};

/// A drawing of a model with all that explains it: title, colour scale and axes.
class Picture
{
public:
    Picture(int width, int height);

    vtkSmartPointer<vtkImageData> draw(PictureContent const& content);

private:
    void addSurface(PictureContent const& content);
    void addLines(vtkPolyData* lines, std::array<double, 3> const& color, double width);
    void addScale(ShownField const& field);
    void addTitle(PictureContent const& content);
    void addText(std::string const& text, int fontSize, bool isBold, double top);
    void addAxes();
    void aim(PictureContent const& content);
    double textUnit() const;
    int fontSize(double shape) const;
    void prepare(vtkTextProperty& text, double size) const;

    int samples_;
    int width_;
    int height_;
    OffScreenWindow window_;
    vtkNew<vtkRenderer> background_;
    vtkNew<vtkRenderer> model_;
    vtkNew<vtkRenderer> overlay_;
    vtkNew<vtkRenderer> axes_;
};

} // namespace Export

#endif
