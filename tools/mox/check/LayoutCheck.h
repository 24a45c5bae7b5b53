#ifndef MOX_CHECK_LAYOUTCHECK_H
#define MOX_CHECK_LAYOUTCHECK_H

#include "Findings.h"
#include "ShapeDatasets.h"

#include "moxread/Model.h"

namespace Mox::Check {

/// Checks what a shape's datasets are, without their values: that those of a mesh are there and of
/// the right numbers, and that all have as many rows as the shape has nodes or elements.
class LayoutCheck
{
public:
    LayoutCheck(MoxRead::Model const& model, Findings& findings)
        : model_(model), findings_(findings)
    {}

    void run(ShapeDatasets const& shape);

private:
    void checkMesh(ShapeDatasets const& shape);
    void checkNumbers(ShapeDatasets const& shape, MoxRead::Variable const& variable);
    void checkRows(ShapeDatasets const& shape, MoxRead::Variable const& variable);
    void checkPlace(ShapeDatasets const& shape, MoxRead::Variable const& variable);
    void checkLink(ShapeDatasets const& shape, MoxRead::Variable const& variable);
    void checkLayouts(ShapeDatasets const& shape);

    MoxRead::Model const& model_;
    Findings& findings_;
};

} // namespace Mox::Check

#endif
