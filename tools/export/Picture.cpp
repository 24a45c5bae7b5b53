#include "Picture.h"

#include "ColorScale.h"
#include "Shrink.h"

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
#include <vtkTextActor.h>
#include <vtkTextProperty.h>
#include <vtkTextRenderer.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Export {

namespace {

using Vector = std::array<double, 3>;

constexpr Vector black = {0.1, 0.1, 0.1};
constexpr Vector grey = {0.6, 0.6, 0.6};
constexpr Vector darkGrey = {0.25, 0.25, 0.25};
constexpr int leastFontSize = 9;
constexpr double modelTop = 0.9;
constexpr double modelRight = 0.84;
constexpr double scaleLeft = 0.86;
constexpr int leastAxes = 80;
constexpr double axesSize = 0.2;

void color(vtkPolyDataMapper& mapper, PictureContent const& content)
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
    mapper.SetLookupTable(ColorScale(*content.field).table());
    mapper.UseLookupTableScalarRangeOn();
    mapper.InterpolateScalarsBeforeMappingOn();
}

// Cuts the text until it is no wider than that.
void shorten(vtkTextActor& actor, std::string text, vtkRenderer& renderer, double width)
{
    std::array<double, 2> size = {};
    for (actor.GetSize(&renderer, size.data()); size[0] > width && !text.empty();
         actor.GetSize(&renderer, size.data())) {
        // No character may be cut in two.
        do
            text.pop_back();
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0x80U) != 0);
        actor.SetInput((text + "...").c_str());
    }
}

// How many pixels are drawn for one, in each direction: OpenGL's own ways to smooth edges depend on
// the machine.
int samplesFor(int size)
{
    if (size <= 2048)
        return 3;
    return size <= 4096 ? 2 : 1;
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

/// The least and greatest coordinate of some points along a direction.
struct Extent
{
    double least = 0;
    double greatest = 0;

    double size() const { return greatest - least; }
    double middle() const { return (least + greatest) / 2; }
};

Extent extentAlong(vtkPolyData& data, Vector const& axis)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Extent extent{infinity, -infinity};
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

Picture::Picture(int width, int height)
    : samples_(samplesFor(std::max(width, height))), width_(samples_ * width),
      height_(samples_ * height), window_(width_, height_)
{
    vtkTextRenderer::GetInstance()->SetDefaultBackend(vtkTextRenderer::FreeType);
    window_.get().SetNumberOfLayers(3);
    background_->SetBackground(1, 1, 1);
    for (vtkRenderer* renderer : {background_.Get(), model_.Get(), overlay_.Get(), axes_.Get()})
        window_.get().AddRenderer(renderer);
    model_->SetLayer(1);
    overlay_->SetLayer(2);
    axes_->SetLayer(2);
    double const size = std::max(axesSize * textUnit(), static_cast<double>(leastAxes * samples_));
    axes_->SetViewport(0, 0, size / width_, size / height_);
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
    // White light: the colours mean something.
    constexpr double white = 0.5;
    lights->SetKeyLightWarmth(white);
    lights->SetFillLightWarmth(white);
    lights->SetHeadLightWarmth(white);
    lights->SetBackLightWarmth(white);
    lights->AddLightsToRenderer(model_);
    return shrink(*window_.render(), samples_);
}

void Picture::addSurface(PictureContent const& content)
{
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(content.surface);
    color(*mapper, content);
    // Lines that lie in a face are to be seen.
    mapper->SetResolveCoincidentTopologyToPolygonOffset();
    mapper->SetRelativeCoincidentTopologyPolygonOffsetParameters(2, 4);
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetPointSize(static_cast<float>(height_) / 160);
    actor->GetProperty()->SetLineWidth(static_cast<float>(height_) / 320);
    actor->GetProperty()->SetAmbient(0.4);
    actor->GetProperty()->SetDiffuse(0.65);
    actor->GetProperty()->SetSpecular(0.05);
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
    mapper->SetResolveCoincidentTopologyToPolygonOffset();
    mapper->SetRelativeCoincidentTopologyLineOffsetParameters(0, -8);
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(lineColor[0], lineColor[1], lineColor[2]);
    actor->GetProperty()->LightingOff();
    // Lines thinner than 0.8 pixels of the picture would be lost in it.
    double const pixels = std::max(0.8, width * height_ / samples_ / 960);
    actor->GetProperty()->SetLineWidth(static_cast<float>(pixels * samples_));
    model_->AddActor(actor);
}

void Picture::addScale(ShownField const& field)
{
    vtkNew<vtkTextProperty> text;
    prepare(*text, 0.02);
    ColorScale const scale(field);
    scale.draw(*overlay_, {scaleLeft * width_, 0.2 * height_, 0.026 * textUnit(), 0.6 * height_},
               *text);
}

void Picture::addTitle(PictureContent const& content)
{
    int const size = fontSize(0.028);
    double const top = height_ - 0.6 * size;
    addText(content.title, size, true, top);
    addText(content.subtitle, fontSize(0.022), false, top - 1.4 * size);
}

void Picture::addText(std::string const& text, int size, bool isBold, double top)
{
    vtkNew<vtkTextActor> actor;
    actor->SetInput(text.c_str());
    prepare(*actor->GetTextProperty(), 0);
    actor->GetTextProperty()->SetFontSize(size);
    actor->GetTextProperty()->SetBold(isBold ? 1 : 0);
    actor->GetTextProperty()->SetVerticalJustificationToTop();
    double const left = fontSize(0.02);
    actor->SetPosition(left, top);
    shorten(*actor, text, *overlay_, width_ - 2 * left);
    overlay_->AddActor2D(actor);
}

void Picture::addAxes()
{
    vtkNew<vtkAxesActor> actor;
    actor->SetShaftTypeToCylinder();
    actor->SetCylinderRadius(0.03);
    actor->SetConeRadius(0.25);
    actor->SetTotalLength(1, 1, 1);
    actor->SetNormalizedLabelPosition(1.3, 1.3, 1.3);
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

// Aims the camera so that the model just fits into its part of the picture.
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
    double const half = std::max(vertical.size(), horizontal.size() / aspect) / 2 * margin;
    // A single point has no extent.
    double const scale = half > 0 ? half : 1;
    double const distance = deep.size() + scale;
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
    camera->SetParallelScale(scale);
    model_->ResetCameraClippingRange();
}

// Texts must have room beside the model of a narrow picture, too.
double Picture::textUnit() const
{
    return std::min<double>(height_, 0.75 * width_);
}

int Picture::fontSize(double shape) const
{
    return std::max(leastFontSize * samples_, static_cast<int>(std::lround(shape * textUnit())));
}

void Picture::prepare(vtkTextProperty& text, double size) const
{
    text.SetColor(black[0], black[1], black[2]);
    text.SetFontFamilyToArial();
    text.ItalicOff();
    text.BoldOff();
    text.ShadowOff();
    text.SetFontSize(fontSize(size));
}

} // namespace Export
