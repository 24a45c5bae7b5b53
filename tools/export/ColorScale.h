#ifndef EXPORT_COLORSCALE_H
#define EXPORT_COLORSCALE_H

#include "ShownField.h"

#include <vtkLookupTable.h>
#include <vtkNew.h>

#include <array>
#include <string>

class vtkRenderer;
class vtkTextProperty;

namespace Export {

/// Which colour stands for which value of a field.
class ColorScale
{
public:
    explicit ColorScale(ShownField const& field);

    vtkLookupTable* table() const { return table_.Get(); }

    /// A rectangle, in pixels from the lower left.
    struct Place
    {
        double left;
        double bottom;
        double width;
        double height;
    };
    /// Draws the scale as a bar with numbers to the right of it.
    void draw(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const;

private:
    void fillTable();
    void drawBar(vtkRenderer& renderer, Place const& bar) const;
    void drawNumbers(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const;
    void drawMissing(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const;

    bool hasRange_;
    bool hasMissing_;
    std::array<double, 2> range_;
    vtkNew<vtkLookupTable> table_;
};

} // namespace Export

#endif
