#ifndef EXPORT_STEPS_H
#define EXPORT_STEPS_H

#include "ModelShape.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Export {

struct Step
{
    /// Empty for the one step that stands in where a model has none.
    std::string name;
    /// What orders it among the others: time, frequency, value or running number.
    double time = 0;
};

/// The steps of one model, or of the parts of one: in the order of their times when they have
/// times, else in the order in which the shapes have them. Steps whose times are not known, or not
/// all different, are numbered from 1.
class StepOrder
{
public:
    /// Takes what shapes say of their steps; keeps nothing of the shapes.
    void add(std::vector<ModelShape> const& shapes);

    /// At least one: a model without steps has one without a name.
    /// \param warning says so where times are not all different
    std::vector<Step> steps(std::optional<std::string>& warning) const;

private:
    /// All that datasets say of one step.
    struct Entry
    {
        std::string name;
        /// One for each attribute that orders steps, from the first dataset that has the attribute.
        std::array<std::optional<double>, 4> times;
    };

    static std::optional<double> timeOf(Entry const& entry);
    static bool hasTrueTime(Entry const& entry);
    static void addTimes(Entry& entry, MoxRead::Attributes const& attributes);
    bool haveAllTimes() const;
    bool areDifferent() const;
    std::vector<Step> numbered() const;
    std::vector<Step> timed() const;

    std::vector<Entry> entries_;
    std::map<std::string, std::size_t> places_;
};

/// The step of that name; without a name, the last one. Throws `Error` when there is none.
Step const& findStep(std::vector<Step> const& steps, std::optional<std::string> const& name);

} // namespace Export

#endif
