#ifndef READ_GMSH_VIEWS_H
#define READ_GMSH_VIEWS_H

#include "exchange/Field.h"
#include "exchange/Report.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Gmsh {

/// Values on nodes or elements, as a view of the library has them in one of its steps.
struct ViewData
{
    std::string name;
    Exchange::Location location = Exchange::Location::Nodes;
    std::size_t components = 0;
    std::vector<std::size_t> tags;
    std::vector<double> values;
};

/// The results of the file. Each of Gmsh's views counts its own steps: those of the same time are
/// one step of the model. Where a view has the same time several times, its first step is together
/// with the first ones of the others, its second with the second ones, and so on.
class Views
{
public:
    /// Where one view has values for a step.
    struct Place
    {
        int view = 0;
        int step = 0;
    };

    struct Step
    {
        double time = 0;
        std::vector<Place> places;
    };

    explicit Views(Exchange::Report& report);

    /// Ascending in time; those whose time is no number come last.
    std::vector<Step> const& steps() const { return steps_; }

    static ViewData read(Place const& place);

private:
    std::vector<Step> steps_;
};

} // namespace Gmsh

#endif
