#ifndef READ_GMSH_RESULTS_H
#define READ_GMSH_RESULTS_H

#include "PartRows.h"
#include "Views.h"

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Gmsh {

/// Makes steps and fields of the views of the file that the library has.
class Results
{
public:
    using FieldVisitor = Exchange::Source::FieldVisitor;

    explicit Results(Exchange::Report& report);

    std::size_t stepCount() const { return views_->steps().size(); }
    Exchange::StepInfo step(std::size_t index) const;
    /// Hands over the fields of one step on the parts that `rows` tells of.
    void readStep(std::size_t index, MeshRows const& rows, FieldVisitor const& visit) const;

private:
    /// For each node or element of the mesh, where it is in the data.
    std::vector<std::uint32_t> placesIn(ViewData const& data, MeshRows const& rows) const;
    void visitParts(ViewData const& data, MeshRows const& rows, FieldVisitor const& visit) const;

    Exchange::Report& report_;
    std::unique_ptr<Views const> views_;
};

} // namespace Gmsh

#endif
