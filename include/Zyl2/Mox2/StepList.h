#ifndef ZYL2_MOX2_STEPLIST_H
#define ZYL2_MOX2_STEPLIST_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/Step.h>

#include <vector>

namespace Zyl2 {
namespace Mox2 {

struct StepData;

/// The steps that share one dataset: its values are written once and registered for each of them.
class ZYL2_EXPORT StepList
{
public:
    /// `count` steps, each with an empty name and no attributes.
    /// \param count number of steps
    explicit StepList(unsigned long count);
    /// A deep copy.
    /// \param other stays as it is
    StepList(StepList const& other);
    /// Takes the other list's steps.
    /// \param other stays as it is
    /// \return this list
    StepList& operator=(StepList const& other);
    ~StepList();

    /// Number of steps.
    unsigned long size() const;

    /// Gives one step the name and a copy of the attributes of `step`.
    /// \param index counted from 0
    /// \param step  stays as it is
    /// \pre `index` is less than `size()`; this is not checked
    void set(unsigned long index, Step const& step);

    /// A copy of one step.
    /// \param index counted from 0
    /// \return the copy: changing it changes nothing in the list
    /// \pre `index` is less than `size()`; this is not checked
    Step operator[](unsigned long index) const;

    /// The steps, for the library's own use.
    std::vector<StepData> const& data() const { return *steps_; }

private:
    std::vector<StepData>* steps_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
