#include "Views.h"

#include <gmsh.h>

#include <cmath>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

namespace Gmsh {

namespace {

struct ModelData
{
    std::string type;
    std::vector<std::size_t> tags;
    std::vector<double> values;
    double time = 0;
    int components = 0;
};

ModelData read(int view, int step)
{
    ModelData data;
    gmsh::view::getHomogeneousModelData(view, step, data.type, data.tags, data.values, data.time,
                                        data.components);
    return data;
}

std::string option(int view, char const* name)
{
    return "View[" + std::to_string(gmsh::view::getIndex(view)) + "]." + name;
}

std::string nameOf(int view)
{
    std::string name;
    gmsh::option::getString(option(view, "Name"), name);
    return name;
}

int stepCountOf(int view)
{
    double count = 0;
    gmsh::option::getNumber(option(view, "NbTimeStep"), count);
    return static_cast<int>(count);
}

/// Whether each node or element has as many values as there are components: Gmsh also knows values
/// on the nodes of each element, and several values in one element.
bool isUsable(ModelData const& data)
{
    return (data.type == "NodeData" || data.type == "ElementData") && data.components > 0 &&
           data.values.size() == data.tags.size() * static_cast<std::size_t>(data.components);
}

std::string leftOutSentence(std::string const& name, ModelData const& data)
{
    std::string const what =
        data.type == "ElementNodeData" ? "on the nodes of each element" : "(" + data.type + ")";
    return "The values of '" + name + "' " + what + " were left out.";
}

/// The key that steps are sorted by. A time that is not a number compares with no other, so that it
/// alone would leave the order undefined.
struct Moment
{
    explicit Moment(double time) : isNoNumber(std::isnan(time)), order(isNoNumber ? 0 : time) {}

    double time() const { return isNoNumber ? std::numeric_limits<double>::quiet_NaN() : order; }

    bool operator<(Moment const& other) const
    {
        return std::tie(isNoNumber, order) < std::tie(other.isNoNumber, other.order);
    }

    bool isNoNumber;
    double order;
};

class StepCollector
{
public:
    explicit StepCollector(Exchange::Report& report) : report_(report) {}

    void addView(int view)
    {
        std::map<Moment, int> occurrences;
        for (int step = 0; step < stepCountOf(view); ++step) {
            ModelData const data = read(view, step);
            if (data.tags.empty())
                continue;
            if (!isUsable(data)) {
                report_.warn(leftOutSentence(nameOf(view), data));
                continue;
            }
            Moment const moment(data.time);
            places_[{moment, occurrences[moment]++}].push_back({view, step});
        }
    }

    std::vector<Views::Step> steps() const
    {
        std::vector<Views::Step> steps;
        for (auto const& [key, places] : places_)
            steps.push_back({key.first.time(), places});
        return steps;
    }

private:
    Exchange::Report& report_;
    std::map<std::pair<Moment, int>, std::vector<Views::Place>> places_;
};

} // namespace

Views::Views(Exchange::Report& report)
{
    std::vector<int> views;
    gmsh::view::getTags(views);
    StepCollector collector(report);
    for (int const view : views)
        collector.addView(view);
    steps_ = collector.steps();
}

ViewData Views::read(Place const& place)
{
    ModelData data = Gmsh::read(place.view, place.step);
    ViewData result;
    result.name = nameOf(place.view);
    result.location =
        data.type == "NodeData" ? Exchange::Location::Nodes : Exchange::Location::Elements;
    result.components = static_cast<std::size_t>(data.components);
    result.tags = std::move(data.tags);
    result.values = std::move(data.values);
    return result;
}

} // namespace Gmsh
