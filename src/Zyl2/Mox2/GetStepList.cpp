#include "Zyl2/Mox2/GetStepList.h"

namespace Zyl2 {
namespace Mox2 {

template <>
std::vector<StepData> const& getStepList(StepList const& given)
{
    return given.data();
}

template <>
std::vector<StepData> const& getStepList(Step const& given)
{
    thread_local std::vector<StepData> single(1);
    single.front() = StepData{given.name, given.attributes.map()};
    return single;
}

} // namespace Mox2
} // namespace Zyl2
