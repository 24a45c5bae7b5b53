#include "View.h"

#include "AboutFile.h"
#include "Deformation.h"
#include "Error.h"
#include "NumberFormat.h"
#include "Picture.h"
#include "PngFile.h"
#include "Stages.h"
#include "StepReader.h"
#include "Surface.h"
#include "XmlText.h"
#include "common/PartialFile.h"
#include "vtk/Messages.h"

#include <vtkCellData.h>
#include <vtkPointData.h>

#include <cmath>
#include <filesystem>

namespace Export {

namespace {

std::string subtitleOf(ViewSummary const& summary)
{
    std::string text = xmlText(summary.step);
    auto const append = [&](std::string const& more) { text += (text.empty() ? "" : ", ") + more; };
    if (!summary.field.empty())
        append(xmlText(summary.field) + (summary.component.empty() ? "" : " " + summary.component));
    if (summary.warp != 0)
        append("deformed " + shortNumber(summary.warp) + " times");
    return text;
}

void describeField(ViewSummary& summary, std::optional<ShownField> const& field)
{
    summary.least = NAN;
    summary.greatest = NAN;
    if (!field)
        return;
    summary.field = field->name;
    summary.component = field->component;
    summary.least = field->least;
    summary.greatest = field->greatest;
}

/// Draws one step of a model.
class Viewer
{
public:
    /// How often `draw` tells of a stage.
    static constexpr std::size_t stageCount = 4;

    Viewer(std::string const& input, ViewOptions const& options, Stages& stages)
        : input_(input), options_(options), stages_(stages), reader_(input)
    {}

    vtkSmartPointer<vtkImageData> draw()
    {
        Step const& step = reader_.step(options_.step);
        reader_.open(StepReader::Layout::Joined);
        stages_.finishOne();
        reader_.show(step);
        stages_.finishOne();
        Grid const& grid = *reader_.grids().front();
        PictureContent content;
        content.camera = options_.camera;
        content.field = findShownField(grid, step.name, options_.field, options_.component);
        Deformation const deformation(*grid.get(), options_.warp);
        describe(step, content.field, deformation.factor());
        fill(content, grid, deformation);
        stages_.finishOne();
        auto image = Picture(options_.width, options_.height).draw(content);
        stages_.finishOne();
        return image;
    }

    ViewSummary const& summary() const { return summary_; }

private:
    void describe(Step const& step, std::optional<ShownField> const& field, double factor)
    {
        summary_.width = options_.width;
        summary_.height = options_.height;
        summary_.step = step.name;
        summary_.warp = factor;
        describeField(summary_, field);
    }

    void fill(PictureContent& content, Grid const& grid, Deformation const& deformation)
    {
        content.title = xmlText(std::filesystem::path(input_).filename().string());
        content.subtitle = subtitleOf(summary_);
        Surface const shown(grid, content.field, deformation.points());
        if (shown.isEmpty())
            throw Error("There is nothing in it that can be drawn.");
        content.surface = shown.faces();
        content.borders = shown.borders();
        if (options_.edges)
            content.edges = shown.edges();
        if (deformation.factor() != 0)
            content.undeformed = Surface(grid, std::nullopt, grid.get()->GetPoints()).borders();
        summary_.warnings = reader_.warnings().sentences();
    }

    std::string input_;
    ViewOptions const& options_;
    Stages& stages_;
    StepReader reader_;
    ViewSummary summary_;
};

} // namespace

ViewSummary viewModel(std::string const& input, std::string const& output,
                      ViewOptions const& options)
{
    Vtk::Messages const messages;
    std::optional<Common::PartialFile> file;
    aboutFile(output, [&] { file.emplace(output, options.overwrite); });
    ViewSummary summary;
    Stages stages(options.progress, Viewer::stageCount + 1);
    auto const image = aboutFile(input, [&] {
        Viewer viewer(input, options, stages);
        auto drawn = viewer.draw();
        summary = viewer.summary();
        messages.raiseError<Error>();
        return drawn;
    });
    aboutFile(output, [&] {
        writePng(*image, file->path());
        stages.finishOne();
        file->publish();
    });
    return summary;
}

} // namespace Export
