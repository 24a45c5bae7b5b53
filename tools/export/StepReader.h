#ifndef EXPORT_STEPREADER_H
#define EXPORT_STEPREADER_H

#include "Annotations.h"
#include "Grid.h"
#include "Steps.h"

#include "moxread/Model.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Export {

/// A model as grids, one step at a time.
class StepReader
{
public:
    enum class Layout
    {
        /// All shapes in one grid.
        Joined,
        /// A grid for each shape.
        Apart
    };

    /// Finds shapes and steps; reads no values yet.
    explicit StepReader(std::string const& path,
                        MoxRead::ReadOptions const& options = MoxRead::ReadOptions());

    std::vector<ModelShape> const& shapes() const { return shapes_; }
    /// At least one: a model without steps has one without a name.
    std::vector<Step> const& steps() const { return steps_; }
    /// Throws `Error` when there is no step of that name; without a name, the last one.
    Step const& step(std::optional<std::string> const& name) const;
    MoxRead::Model const& model() const { return model_; }
    Warnings& warnings() { return warnings_; }
    std::vector<std::unique_ptr<Grid>> const& grids() const { return grids_; }

    /// Reads the mesh and all that belongs to no step.
    void open(Layout layout);
    /// Puts a step's fields into the grids.
    void show(Step const& step);

private:
    MoxRead::Model model_;
    std::vector<ModelShape> shapes_;
    std::vector<Step> steps_;
    Warnings warnings_;
    std::vector<std::unique_ptr<Grid>> grids_;
    std::vector<std::unique_ptr<Annotations>> annotations_;
};

} // namespace Export

#endif
