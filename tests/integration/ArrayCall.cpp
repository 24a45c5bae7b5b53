#include "integration/ArrayCall.h"

namespace Integration {

namespace {

using Zyl2::Mox2::Array1d;
using Zyl2::Mox2::Array2d;
using Zyl2::Mox2::Model;
using Zyl2::Mox2::Step;
using Zyl2::Mox2::StepList;

Step hostStep(NamedStep const& step)
{
    return Step(step.name, step.attributes.host());
}

StepList hostSteps(std::vector<NamedStep> const& steps)
{
    StepList result(steps.size());
    for (std::size_t index = 0; index < steps.size(); ++index)
        result.set(index, hostStep(steps[index]));
    return result;
}

template <typename ArrayT, typename ComponentT, typename StepT>
void runWithAll(Model& model, ArrayCall const& call, ArrayT const& values, ComponentT const& ids,
                StepT const& steps)
{
    if (call.name)
        model.addArrayProperty(*call.name, call.type, values, ids, steps, call.attributes.host());
    else
        model.addArrayProperty(call.type, values, ids, steps, call.attributes.host());
}

template <typename ArrayT, typename ComponentT>
void runWithIds(Model& model, ArrayCall const& call, ArrayT const& values, ComponentT const& ids)
{
    if (call.asSingleStep)
        runWithAll(model, call, values, ids, hostStep(call.steps.at(0)));
    else
        runWithAll(model, call, values, ids, hostSteps(call.steps));
}

template <typename ArrayT>
void runWithArray(Model& model, ArrayCall const& call, ArrayT const& values)
{
    if (call.asInt)
        runWithIds(model, call, values, static_cast<int>(call.ids.at(0)));
    else if (call.asSingleId)
        runWithIds(model, call, values, call.ids.at(0));
    else
        runWithIds(model, call, values, Array1d<unsigned int>(call.ids));
}

template <typename T>
void runWithElement(Model& model, ArrayCall const& call)
{
    std::vector<T> const values = call.values.as<T>();
    if (call.asColumn)
        runWithArray(model, call, Array1d<T>(values));
    else
        runWithArray(model, call, Array2d<T>(call.values.rows(), call.values.width, values));
}

} // namespace

void ArrayCall::run(Model& model) const
{
    if (values.element == Element::Float)
        runWithElement<float>(model, *this);
    else
        runWithElement<unsigned int>(model, *this);
}

} // namespace Integration
