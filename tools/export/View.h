#ifndef EXPORT_VIEW_H
#define EXPORT_VIEW_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Export {

enum class Camera
{
    Iso,
    X,
    Y,
    Z
};

struct ViewOptions
{
    /// Name of the step that is shown; by default the last one.
    std::optional<std::string> step;
    /// The field that is shown in colours; by default Displacement, else the first field, else
    /// none: the shapes have their own colours.
    std::optional<std::string> field;
    /// The component of the field; by default the length of a vector, or von Mises' value of a
    /// tensor.
    std::optional<std::string> component;
    /// Factor of the displacements; without it, the largest one becomes a tenth of the model's
    /// size.
    std::optional<double> warp;
    int width = 1280;
    int height = 960;
    Camera camera = Camera::Iso;
    bool edges = false;
    bool overwrite = false;
    /// Told how many stages of the work are done, and of how many.
    std::function<void(std::size_t, std::size_t)> progress = [](std::size_t, std::size_t) {};
};

/// What the picture shows.
struct ViewSummary
{
    int width = 0;
    int height = 0;
    /// Name of the step that is shown; empty where the model has none.
    std::string step;
    std::string field;
    std::string component;
    /// The least and the greatest of the values in the picture; NaN when there are none.
    double least = 0;
    double greatest = 0;
    double warp = 0;
    std::vector<std::string> warnings;
};

/// Draws one step of a model into a PNG file, without a display. The file appears when it is whole.
///
/// Throws `Error`: the name of the file that it is about, a colon, and one sentence.
ViewSummary viewModel(std::string const& input, std::string const& output,
                      ViewOptions const& options = ViewOptions());

} // namespace Export

#endif
