#include "ColorScale.h"

#include "NumberFormat.h"

#include <vtkActor2D.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper2D.h>
#include <vtkRenderer.h>
#include <vtkTextActor.h>
#include <vtkTextProperty.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Export {

namespace {

using Color = std::array<double, 3>;

constexpr int colorCount = 256;
constexpr int numberCount = 7;
constexpr Color missingColor = {0.6, 0.6, 0.6};

// From dark blue over green to yellow: equal steps look alike, without colour vision, too.
constexpr std::array<Color, 10> scaleColors = {{{68, 1, 84},
                                                {72, 40, 120},
                                                {62, 74, 137},
                                                {49, 104, 142},
                                                {38, 130, 142},
                                                {31, 158, 137},
                                                {53, 183, 121},
                                                {110, 206, 88},
                                                {181, 222, 43},
                                                {253, 231, 37}}};

Color colorAt(double place)
{
    double const position = place * (scaleColors.size() - 1);
    auto const left = std::min(static_cast<std::size_t>(position), scaleColors.size() - 2);
    double const part = position - static_cast<double>(left);
    Color color = {};
    for (std::size_t i = 0; i < color.size(); ++i)
        color[i] = ((1 - part) * scaleColors[left][i] + part * scaleColors[left + 1][i]) / 255;
    return color;
}

// A scale needs some width, even where all values are the same.
std::array<double, 2> rangeOf(ShownField const& field)
{
    if (!field.hasRange())
        return {0, 1};
    if (field.least < field.greatest)
        return {field.least, field.greatest};
    double const margin = field.least == 0 ? 1 : std::abs(field.least) / 2;
    return {field.least - margin, field.least + margin};
}

bool hasMissingValues(ShownField const& field)
{
    float const* const begin = field.values->GetPointer(0);
    return std::any_of(begin, begin + field.values->GetNumberOfValues(),
                       [](float value) { return std::isnan(value); });
}

std::string textOf(double value, std::string const& format)
{
    std::array<char, 64> text = {};
    // A rounded -0.0001 is no less than 0.
    double const shown = std::abs(value) < 1e-12 ? 0 : value;
    std::snprintf(text.data(), text.size(), format.c_str(), shown);
    return text.data();
}

/// Coloured rectangles on the picture's plane.
class Rectangles
{
public:
    Rectangles() { colors_->SetNumberOfComponents(3); }

    void add(ColorScale::Place const& place, double const* color)
    {
        cells_->InsertNextCell(4);
        for (auto const& [right, top] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            cells_->InsertCellPoint(points_->InsertNextPoint(place.left + right * place.width,
                                                             place.bottom + top * place.height, 0));
        colors_->InsertNextTuple3(255 * color[0], 255 * color[1], 255 * color[2]);
    }

    void addTo(vtkRenderer& renderer) const
    {
        vtkNew<vtkPolyData> data;
        data->SetPoints(points_);
        data->SetPolys(cells_);
        data->GetCellData()->SetScalars(colors_);
        vtkNew<vtkPolyDataMapper2D> mapper;
        mapper->SetInputData(data);
        vtkNew<vtkActor2D> actor;
        actor->SetMapper(mapper);
        renderer.AddActor2D(actor);
    }

private:
    vtkNew<vtkPoints> points_;
    vtkNew<vtkCellArray> cells_;
    vtkNew<vtkUnsignedCharArray> colors_;
};

void drawText(vtkRenderer& renderer, std::string const& text, double left, double middle,
              vtkTextProperty& property)
{
    vtkNew<vtkTextActor> actor;
    actor->SetInput(text.c_str());
    actor->GetTextProperty()->ShallowCopy(&property);
    actor->GetTextProperty()->SetVerticalJustificationToCentered();
    actor->SetPosition(left, middle);
    renderer.AddActor2D(actor);
}

double numbersLeft(ColorScale::Place const& bar)
{
    return bar.left + 1.4 * bar.width;
}

} // namespace

ColorScale::ColorScale(ShownField const& field)
    : hasRange_(field.hasRange()), hasMissing_(hasMissingValues(field)), range_(rangeOf(field))
{
    fillTable();
}

void ColorScale::draw(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const
{
    if (hasRange_) {
        drawBar(renderer, bar);
        drawNumbers(renderer, bar, text);
    }
    if (hasMissing_)
        drawMissing(renderer, bar, text);
}

void ColorScale::fillTable()
{
    table_->SetNumberOfTableValues(colorCount);
    for (int i = 0; i < colorCount; ++i) {
        Color const color = colorAt(static_cast<double>(i) / (colorCount - 1));
        table_->SetTableValue(i, color[0], color[1], color[2]);
    }
    table_->SetTableRange(range_.data());
    table_->SetNanColor(missingColor[0], missingColor[1], missingColor[2], 1);
}

void ColorScale::drawBar(vtkRenderer& renderer, Place const& bar) const
{
    Rectangles rectangles;
    double const height = bar.height / colorCount;
    for (int i = 0; i < colorCount; ++i)
        // Each rectangle reaches behind the next one, so that rounding leaves no gaps.
        rectangles.add({bar.left, bar.bottom + i * height, bar.width,
                        std::min(2 * height, bar.height - i * height)},
                       table_->GetTableValue(i));
    rectangles.addTo(renderer);
}

void ColorScale::drawNumbers(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const
{
    std::string const format = numberFormat(range_[0], range_[1]);
    for (int i = 0; i < numberCount; ++i) {
        double const part = static_cast<double>(i) / (numberCount - 1);
        double const value = range_[0] + part * (range_[1] - range_[0]);
        drawText(renderer, textOf(value, format), numbersLeft(bar), bar.bottom + part * bar.height,
                 text);
    }
}

void ColorScale::drawMissing(vtkRenderer& renderer, Place const& bar, vtkTextProperty& text) const
{
    Place const box = {bar.left, bar.bottom - 2 * bar.width, bar.width, bar.width};
    Rectangles rectangles;
    rectangles.add(box, missingColor.data());
    rectangles.addTo(renderer);
    drawText(renderer, "no value", numbersLeft(bar), box.bottom + box.height / 2, text);
}

} // namespace Export
