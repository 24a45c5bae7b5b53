#include "vtkexport/Picture.h"

#include "vtkexport/NumberFormat.h"

#include <vtkActor.h>
#include <vtkAxesActor.h>
#include <vtkCamera.h>
#include <vtkCaptionActor2D.h>
#include <vtkCellData.h>
#include <vtkLightKit.h>
#include <vtkMapper.h>
#include <vtkMath.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkScalarBarActor.h>
#include <vtkTextActor.h>
#include <vtkTextProperty.h>
#include <vtkTextRenderer.h>

#include <algorithm>
#include <cmath>

namespace VtkExport {

namespace {

using Vector = std::array<double, 3>;

constexpr int colorCount = 256;
constexpr Vector black = {0.1, 0.1, 0.1};
constexpr Vector grey = {0.6, 0.6, 0.6};
constexpr Vector darkGrey = {0.25, 0.25, 0.25};
constexpr double modelTop = 0.9;
constexpr double modelRight = 0.84;
constexpr double axesSize = 0.2;

// From dark blue over green to yellow: equal steps look alike, without colour vision, too.
constexpr std::array<Vector, 10> colorScale = {{{68, 1, 84},
                                                {72, 40, 120},
                                                {62, 74, 137},
                                                {49, 104, 142},
                                                {38, 130, 142},
                                                {31, 158, 137},
                                                {53, 183, 121},
                                                {110, 206, 88},
                                                {181, 222, 43},
                                                {253, 231, 37}}};

Vector scaleColor(double place)
{
    double const position = place * (colorScale.size() - 1);
    auto const left = std::min(static_cast<std::size_t>(position), colorScale.size() - 2);
    double const part = position - static_cast<double>(left);
    Vector color = {};
    for (std::size_t i = 0; i < color.size(); ++i)
        color[i] = ((1 - part) * colorScale[left][i] + part * colorScale[left + 1][i]) / 255;
    return color;
}

// A scale needs some width, even where all values are the same.
std::array<double, 2> scaleRange(ShownField const& field)
{
    if (!field.hasRange())
        return {0, 1};
    if (field.least < field.greatest)
        return {field.least, field.greatest};
    double const margin = field.least == 0 ? 1 : std::abs(field.least) / 2;
    return {field.least - margin, field.least + margin};
}

void fillColors(vtkLookupTable& colors, std::array<double, 2> const& range)
{
    colors.SetNumberOfTableValues(colorCount);
    for (int i = 0; i < colorCount; ++i) {
        Vector const color = scaleColor(static_cast<double>(i) / (colorCount - 1));
        colors.SetTableValue(i, color[0], color[1], color[2]);
    }
    colors.SetTableRange(range.data());
    colors.SetNanColor(grey[0], grey[1], grey[2], 1);
}

void color(vtkPolyDataMapper& mapper, PictureContent const& content, vtkLookupTable* colors)
{
    if (!content.field) {
        mapper.SetScalarModeToUseCellData();
        mapper.SetColorModeToDirectScalars();
        content.surface->GetCellData()->SetActiveScalars("Colors");
        return;
    }
    if (content.field->isOnNodes)
        mapper.SetScalarModeToUsePointFieldData();
    else
        mapper.SetScalarModeToUseCellFieldData();
    mapper.SelectColorArray("Shown");
    mapper.SetLookupTable(colors);
    mapper.UseLookupTableScalarRangeOn();
    mapper.InterpolateScalarsBeforeMappingOn();
}

/// Where the eye is, seen from the model, and what is up in the picture.
struct Direction
{
    Vector eye;
    Vector up;
};

Direction directionOf(Camera camera)
{
    switch (camera) {
    case Camera::X:
        return {{1, 0, 0}, {0, 0, 1}};
    case Camera::Y:
        return {{0, -1, 0}, {0, 0, 1}};
    case Camera::Z:
        return {{0, 0, 1}, {0, 1, 0}};
    case Camera::Iso:
        break;
    }
    return {{0.7, -1, 0.6}, {0, 0, 1}};
}

Vector cross(Vector const& left, Vector const& right)
{
    Vector result = {};
    vtkMath::Cross(left.data(), right.data(), result.data());
    vtkMath::Normalize(result.data());
    return result;
}

/// What a direction sees of some points: from where to where along it.
struct Extent
{
    double least = 0;
    double greatest = 0;

    double size() const { return greatest - least; }
    double middle() const { return (least + greatest) / 2; }
};

Extent extentAlong(vtkPolyData& data, Vector const& axis)
{
    Extent extent{INFINITY, -INFINITY};
    Vector point = {};
    for (vtkIdType i = 0; i < data.GetNumberOfPoints(); ++i) {
        data.GetPoint(i, point.data());
        double const place = vtkMath::Dot(point.data(), axis.data());
        if (std::isfinite(place)) {
            extent.least = std::min(extent.least, place);
            extent.greatest = std::max(extent.greatest, place);
        }
    }
    return extent.least <= extent.greatest ? extent : Extent{};
}

Extent extentAlong(PictureContent const& content, Vector const& axis)
{
    Extent extent = extentAlong(*content.surface, axis);
    if (content.undeformed) {
        Extent const other = extentAlong(*content.undeformed, axis);
        extent.least = std::min(extent.least, other.least);
        extent.greatest = std::max(extent.greatest, other.greatest);
    }
    return extent;
}

} // namespace

Picture::Picture(int width, int height) : window_(width, height), width_(width), height_(height)
{
    vtkTextRenderer::GetInstance()->SetDefaultBackend(vtkTextRenderer::FreeType);
    window_.get().SetNumberOfLayers(2);
    for (vtkRenderer* renderer : {model_.Get(), overlay_.Get(), axes_.Get()}) {
        renderer->SetBackground(1, 1, 1);
        window_.get().AddRenderer(renderer);
    }
    overlay_->SetLayer(1);
    axes_->SetLayer(1);
    axes_->SetViewport(0, 0, axesSize * height / width, axesSize);
}

vtkSmartPointer<vtkImageData> Picture::draw(PictureContent const& content)
{
    double const right = content.field ? modelRight : 1;
    model_->SetViewport(0, 0, right, modelTop);
    addSurface(content);
    addLines(content.edges, darkGrey, 1);
    addLines(content.borders, darkGrey, 1.5);
    addLines(content.undeformed, grey, 1);
    if (content.field)
        addScale(*content.field);
    addTitle(content);
    aim(content);
    addAxes();
    vtkNew<vtkLightKit> lights;
    lights->AddLightsToRenderer(model_);
    return window_.render();
}

void Picture::addSurface(PictureContent const& content)
{
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(content.surface);
    if (content.field)
        fillColors(*colors_, scaleRange(*content.field));
    color(*mapper, content, colors_);
    // Lines that lie in a face are to be seen.
    mapper->SetResolveCoincidentTopologyToPolygonOffset();
    mapper->SetRelativeCoincidentTopologyPolygonOffsetParameters(1, 1);
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetPointSize(static_cast<float>(height_) / 160);
    actor->GetProperty()->SetLineWidth(static_cast<float>(height_) / 320);
    actor->GetProperty()->SetAmbient(0.2);
    actor->GetProperty()->SetDiffuse(0.85);
    actor->GetProperty()->SetSpecular(0.1);
    actor->GetProperty()->SetSpecularPower(20);
    model_->AddActor(actor);
}

void Picture::addLines(vtkPolyData* lines, std::array<double, 3> const& lineColor, double width)
{
    if (lines == nullptr)
        return;
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(lines);
    mapper->ScalarVisibilityOff();
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(lineColor[0], lineColor[1], lineColor[2]);
    actor->GetProperty()->LightingOff();
    actor->GetProperty()->SetLineWidth(static_cast<float>(width * height_ / 960));
    model_->AddActor(actor);
}

void Picture::addScale(ShownField const& field)
{
    auto const range = scaleRange(field);
    vtkNew<vtkScalarBarActor> bar;
    bar->SetLookupTable(colors_);
    bar->SetMaximumNumberOfColors(colorCount);
    bar->SetNumberOfLabels(7);
    bar->SetLabelFormat(numberFormat(range[0], range[1]).c_str());
    bar->UnconstrainedFontSizeOn();
    bar->SetBarRatio(0.2);
    bar->SetTextPad(fontSize(0.008));
    bar->GetPositionCoordinate()->SetCoordinateSystemToNormalizedViewport();
    bar->GetPositionCoordinate()->SetValue(0.86, 0.18);
    bar->SetWidth(0.125);
    bar->SetHeight(0.62);
    prepare(*bar->GetLabelTextProperty(), 0.02);
    overlay_->AddActor2D(bar);
}

void Picture::addTitle(PictureContent const& content)
{
    addText(content.title, fontSize(0.028), true, 0.02);
    addText(content.subtitle, fontSize(0.022), false, 0.06);
}

void Picture::addText(std::string const& text, int size, bool isBold, double fromTop)
{
    vtkNew<vtkTextActor> actor;
    actor->SetInput(text.c_str());
    prepare(*actor->GetTextProperty(), 0);
    actor->GetTextProperty()->SetFontSize(size);
    actor->GetTextProperty()->SetBold(isBold ? 1 : 0);
    actor->GetTextProperty()->SetVerticalJustificationToTop();
    actor->SetPosition(fontSize(0.02), (1 - fromTop) * height_);
    overlay_->AddActor2D(actor);
}

void Picture::addAxes()
{
    vtkNew<vtkAxesActor> actor;
    actor->SetShaftTypeToCylinder();
    actor->SetCylinderRadius(0.03);
    actor->SetConeRadius(0.25);
    actor->SetTotalLength(1, 1, 1);
    for (vtkCaptionActor2D* caption :
         {actor->GetXAxisCaptionActor2D(), actor->GetYAxisCaptionActor2D(),
          actor->GetZAxisCaptionActor2D()}) {
        caption->GetTextActor()->SetTextScaleModeToNone();
        prepare(*caption->GetCaptionTextProperty(), 0.02);
    }
    axes_->AddActor(actor);
    vtkCamera* const camera = axes_->GetActiveCamera();
    camera->SetFocalPoint(0, 0, 0);
    camera->SetPosition(model_->GetActiveCamera()->GetDirectionOfProjection());
    camera->SetPosition(-camera->GetPosition()[0], -camera->GetPosition()[1],
                        -camera->GetPosition()[2]);
    camera->SetViewUp(model_->GetActiveCamera()->GetViewUp());
    camera->ParallelProjectionOn();
    camera->SetParallelScale(1.6);
    axes_->ResetCameraClippingRange();
}

// As near as shows all of it.
void Picture::aim(PictureContent const& content)
{
    constexpr double margin = 1.12;
    Direction const direction = directionOf(content.camera);
    Vector eye = direction.eye;
    vtkMath::Normalize(eye.data());
    Vector const right = cross(direction.up, eye);
    Vector const up = cross(eye, right);
    Extent const horizontal = extentAlong(content, right);
    Extent const vertical = extentAlong(content, up);
    Extent const deep = extentAlong(content, eye);

    double const aspect = (content.field ? modelRight : 1) * width_ / (modelTop * height_);
    double const scale = std::max(vertical.size(), horizontal.size() / aspect) / 2 * margin;
    double const distance = deep.size() + scale + 1e-30;
    vtkCamera* const camera = model_->GetActiveCamera();
    Vector focus = {};
    Vector position = {};
    for (std::size_t i = 0; i < focus.size(); ++i) {
        focus[i] =
            horizontal.middle() * right[i] + vertical.middle() * up[i] + deep.middle() * eye[i];
        position[i] = focus[i] + distance * eye[i];
    }
    camera->ParallelProjectionOn();
    camera->SetFocalPoint(focus.data());
    camera->SetPosition(position.data());
    camera->SetViewUp(up.data());
    camera->SetParallelScale(scale > 0 ? scale : 1);
    model_->ResetCameraClippingRange();
}

int Picture::fontSize(double partOfHeight) const
{
    return std::max(8, static_cast<int>(std::lround(partOfHeight * height_)));
}

void Picture::prepare(vtkTextProperty& text, double partOfHeight) const
{
    text.SetColor(black[0], black[1], black[2]);
    text.SetFontFamilyToArial();
    text.ItalicOff();
    text.BoldOff();
    text.ShadowOff();
    text.SetFontSize(fontSize(partOfHeight));
}

} // namespace VtkExport
