#include <Zyl2/Mox2/StepList.h>

#include "Zyl2/Mox2/StepData.h"

namespace Zyl2 {
namespace Mox2 {

StepList::StepList(unsigned long count) : steps_(new std::vector<StepData>(count)) {}

StepList::StepList(StepList const& other) : steps_(new std::vector<StepData>(*other.steps_)) {}

StepList& StepList::operator=(StepList const& other)
{
    if (this != &other)
        *steps_ = *other.steps_;
    return *this;
}

StepList::~StepList()
{
    delete steps_;
}

unsigned long StepList::size() const
{
    return steps_->size();
}

void StepList::set(unsigned long index, Step const& step)
{
    (*steps_)[index] = StepData{step.name, step.attributes.map()};
}

Step StepList::operator[](unsigned long index) const
{
    StepData const& data = (*steps_)[index];
    return Step(data.name, Attributes(data.attributes));
}

} // namespace Mox2
} // namespace Zyl2
